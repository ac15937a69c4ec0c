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
#include "tools/rtrange/results/default_name.hpp"
#include "tools/rtrange/results/no_rows.hpp"

namespace rtrange {
namespace {

bool is_hdf5_name(const std::filesystem::path& file) {
    return file.extension() == ".h5" || file.extension() == ".hdf5";
}

} // namespace

std::filesystem::path output_of(const decode_options& options) {
    const bool is_hdf5 = options.kind == "hdf5";
    if (options.output.empty())
        return default_name(options.run, options.interface_name, is_hdf5 ? ".h5" : "");
    if (!is_hdf5 && is_hdf5_name(options.output))
        throw usage_failure(fmt::format("'{}' is the name of an HDF5 file; add --as hdf5",
                                        options.output.string()));
    return options.output;
}

void check_captures(const std::filesystem::path& output, const decode_options& options) {
    check_output(output, options.run.captures);
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
    if (options.kind == "hdf5")
        return std::make_unique<hdf5_output>(output, rules, columns);
    return std::make_unique<csv_output>(output, rules, columns);
}

int decode(const decode_options& options) {
    const std::filesystem::path file = output_of(options);
    auto captures = open_captures(options.run.captures);
    check_captures(file, options);
    std::optional<live_capture> live;
    if (captures.empty())
        live.emplace(options.interface_name);
    frame_decoder decoder(options.run);
    catch_interruptions();
    const auto output = create_output(file, options, decoder.columns());
    const auto faults =
        live ? decode_live(*live, decoder, *output) : decode_captures(captures, decoder, *output);
    end_without_rows(decoder, options.run, faults);
    output->close();
    print_summary(decoder, output->tables());
    return end_with_faults(faults);
}

} // namespace rtrange
