#include "tools/rtrange/decode_summary.hpp"

#include <fmt/format.h>

#include "tools/rtrange/times.hpp"

namespace rtrange {
namespace {

void print_count(std::uint64_t count, std::string_view what) {
    if (count > 0)
        fmt::print("  {:>9}  {}\n", count, what);
}

} // namespace

void print_summary(const frame_fates& fates, const std::vector<const csv_file*>& tables) {
    const double seconds = static_cast<double>(fates.last_time_ns - fates.first_time_ns) * 1e-9;
    fmt::print("{} frames, {:.3f} s from {}\n", fates.frames, seconds,
               utc_text(fates.first_time_ns));

    fmt::print("\nFrames\n");
    print_count(fates.decoded, "decoded");
    print_count(fates.not_ipv4, "foreign: not IPv4");
    print_count(fates.not_udp, "foreign: not UDP");
    print_count(fates.other_ports, "foreign: other UDP ports");
    print_count(fates.ignored_rcom, "ignored: RCOM packets without decoded content");
    for (const auto& [place, refusal] : fates.refusals)
        print_count(refusal.count, fmt::format("refused: {}", refusal.message));

    fmt::print("\nTables\n");
    for (const csv_file* const table : tables)
        fmt::print("  {:>9} rows  {}\n", table->rows(), table->path().string());
    if (tables.empty())
        fmt::print("  none: the capture holds no NCOM on UDP port 3000 that could be decoded\n");
}

} // namespace rtrange
