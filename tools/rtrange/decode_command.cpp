#include "tools/rtrange/decode_command.hpp"

#include <cstdio>
#include <memory>
#include <optional>

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

std::unique_ptr<record_output> create_output(const decode_options& options,
                                             const selection& selection) {
    if (options.kind == "hdf5")
        return std::make_unique<hdf5_output>(options.output.empty() ? "decoded.h5" : options.output,
                                             selection);
    if (is_hdf5_name(options.output))
        throw usage_failure("CSV tables go into a folder; for an HDF5 file, add --as hdf5");
    return std::make_unique<csv_output>(options.output.empty() ? "decoded" : options.output,
                                        selection);
}

} // namespace

int decode(const decode_options& options) {
    check_captures(options.run.captures);
    check_output(options.output, options.run.captures);
    std::optional<live_capture> live;
    if (!options.interface_name.empty())
        live.emplace(options.interface_name);
    decoding run(options.run);
    const auto output = create_output(options, run.selection());
    catch_interruptions();
    const auto faults = live ? decode_live(*live, run, *output)
                             : decode_captures(options.run.captures, run, *output);
    output->close();
    print_summary(run.fates(), output->tables());
    return end_with_faults(faults);
}

} // namespace rtrange
