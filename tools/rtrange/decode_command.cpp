#include "tools/rtrange/decode_command.hpp"

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

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

/// Throws usage_failure when a table would take the place of a capture.
void check_tables(const std::filesystem::path& folder,
                  const std::vector<std::filesystem::path>& captures) {
    for (std::size_t table = 0; table < record_table_count; ++table)
        check_output(csv_output::file_of(folder, table), captures);
}

std::unique_ptr<record_output> create_output(const decode_options& options,
                                             const selection& selection) {
    if (options.kind == "hdf5") {
        const auto file = options.output.empty() ? "decoded.h5" : options.output;
        check_output(file, options.run.captures);
        return std::make_unique<hdf5_output>(file, selection);
    }
    if (is_hdf5_name(options.output))
        throw usage_failure("CSV tables go into a folder; for an HDF5 file, add --as hdf5");
    const auto folder = options.output.empty() ? "decoded" : options.output;
    check_tables(folder, options.run.captures);
    return std::make_unique<csv_output>(folder, selection);
}

} // namespace

int decode(const decode_options& options) {
    auto captures = open_captures(options.run.captures);
    std::optional<live_capture> live;
    if (captures.empty())
        live.emplace(options.interface_name);
    decoding run(options.run);
    const auto output = create_output(options, run.selection());
    catch_interruptions();
    const auto faults =
        live ? decode_live(*live, run, *output) : decode_captures(captures, run, *output);
    output->close();
    print_summary(run.fates(), output->tables());
    return end_with_faults(faults);
}

} // namespace rtrange
