#include "tools/rtrange/decode_command.hpp"

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/live_decoding.hpp"
#include "tools/rtrange/outputs/csv_output.hpp"
#include "tools/rtrange/outputs/hdf5_output.hpp"

namespace rtrange {
namespace {

bool is_hdf5_name(const std::filesystem::path& file) {
    return file.extension() == ".h5" || file.extension() == ".hdf5";
}

/// Throws usage_failure when a table would overwrite a capture.
void check_tables(const std::filesystem::path& folder,
                  const std::vector<std::filesystem::path>& captures) {
    for (std::size_t table = 0; table < table_count; ++table)
        check_output(csv_output::file_of(folder, table), captures);
}

std::unique_ptr<table_output> create_output(const decode_options& options,
                                            const table_columns& columns) {
    if (options.kind == "hdf5") {
        const auto file = options.output.empty() ? "decoded.h5" : options.output;
        check_output(file, options.run.captures);
        return std::make_unique<hdf5_output>(file, columns);
    }
    if (is_hdf5_name(options.output))
        throw usage_failure(fmt::format("'{}' is the name of an HDF5 file; add --as hdf5",
                                        options.output.string()));
    const auto folder = options.output.empty() ? "decoded" : options.output;
    check_tables(folder, options.run.captures);
    return std::make_unique<csv_output>(folder, columns);
}

} // namespace

int decode(const decode_options& options) {
    auto captures = open_captures(options.run.captures);
    std::optional<live_capture> live;
    if (captures.empty())
        live.emplace(options.interface_name);
    frame_decoder decoder(options.run);
    const auto output = create_output(options, decoder.columns());
    catch_interruptions();
    const auto faults =
        live ? decode_live(*live, decoder, *output) : decode_captures(captures, decoder, *output);
    output->close();
    print_summary(decoder, output->tables());
    return end_with_faults(faults);
}

} // namespace rtrange
