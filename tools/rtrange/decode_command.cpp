#include "tools/rtrange/decode_command.hpp"

#include <optional>
#include <string>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/live_decoding.hpp"
#include "tools/rtrange/outputs/csv_output.hpp"
#include "tools/rtrange/outputs/hdf5_output.hpp"
#include "tools/rtrange/outputs/with_key_figures.hpp"
#include "tools/rtrange/results/default_name.hpp"
#include "tools/rtrange/results/no_rows.hpp"
#include "tools/rtrange/summarised_run.hpp"

namespace rtrange {
namespace {

/// Throws usage_failure when the name of the output is that of another kind of file.
void check_name(const decode_options& options) {
    const auto extension = options.output.extension();
    if (options.kind != "hdf5" && (extension == ".h5" || extension == ".hdf5"))
        throw usage_failure(fmt::format("'{}' is the name of an HDF5 file; add --as hdf5",
                                        options.output.string()));
    if (options.kind != "mat" && extension == ".mat")
        throw usage_failure(
            fmt::format("'{}' is the name of a MAT file; add --as mat", options.output.string()));
}

} // namespace

std::filesystem::path output_of(const decode_options& options) {
    if (options.output.empty())
        return default_name(options.run, options.interface_name,
                            options.kind == "hdf5"  ? ".h5"
                            : options.kind == "mat" ? ".mat"
                                                    : "");
    check_name(options);
    return options.output;
}

void check_names(const std::filesystem::path& output, const decode_options& options) {
    check_output(output, options.run.captures);
    check_summary(options.run, output);
    if (options.kind == "csv")
        for (const std::string& name : csv_output::file_names())
            check_output(output / name, options.run.captures);
}

std::unique_ptr<table_output> create_output(const std::filesystem::path& output,
                                            const decode_options& options,
                                            const table_columns& columns) {
    // Live traffic cannot be decoded again.
    const result_rules rules{.overwrite = options.overwrite,
                             .keep_unfinished = !options.interface_name.empty()};
    if (options.kind != "csv")
        return std::make_unique<hdf5_output>(
            output, options.kind == "mat" ? hdf5_dialect::matlab : hdf5_dialect::plain, rules,
            columns);
    return std::make_unique<csv_output>(output, rules, columns);
}

namespace {

/// Key figures need columns that a selection of fields may not have.
bool finds_key_figures(const run_options& options) {
    return !options.summary.empty() && options.view == "measured" &&
           options.selection.fields.empty();
}

int decode_into(run_state& state, const decode_options& options) {
    const std::filesystem::path file = output_of(options);
    auto captures = open_captures(options.run.captures);
    check_names(file, options);
    std::optional<live_capture> live;
    if (captures.empty())
        live.emplace(options.interface_name);
    frame_decoder& decoder = state.decoder.emplace(options.run);
    catch_interruptions();
    const auto output = create_output(file, options, decoder.columns());
    std::optional<with_key_figures> figures;
    if (finds_key_figures(options.run))
        figures.emplace(*output, decoder.columns());
    table_output& rows = figures ? static_cast<table_output&>(*figures) : *output;
    state.faults =
        live ? decode_live(*live, decoder, rows) : decode_captures(captures, decoder, rows);
    end_without_rows(decoder, options.run, state.faults);
    if (figures)
        state.figures = figures->figures(decoder.outcomes());
    output->close();
    state.tables = output->tables();
    print_summary(decoder, state.tables);
    return end_with_faults(state.faults);
}

} // namespace

int decode(const decode_options& options) {
    return run_with_summary({"decode", options.run, options.interface_name, options.overwrite},
                            [&](run_state& state) { return decode_into(state, options); });
}

} // namespace rtrange
