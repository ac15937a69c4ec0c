#include "tools/rtrange/decode_summary.hpp"

#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/times.hpp"

namespace rtrange {
namespace {

void print_count(std::uint64_t count, std::string_view what) {
    if (count > 0)
        fmt::print("  {:>9}  {}\n", count, what);
}

/// "target 1 (195.0.0.21)" of "Successfully identified IP for target 1 (195.0.0.21)."
std::string_view unit_and_address(std::string_view message) {
    constexpr std::string_view introduction = "Successfully identified IP for ";
    if (message.starts_with(introduction))
        message.remove_prefix(introduction.size());
    if (message.ends_with('.'))
        message.remove_suffix(1);
    return message;
}

std::string repetitions(std::uint64_t count) {
    return count > 1 ? fmt::format(", named {} times", count) : "";
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

    if (!fates.identifications.empty())
        fmt::print("\nUnits\n");
    for (const auto& [message, identification] : fates.identifications)
        fmt::print("  {:9.3f} s  {}{}\n",
                   static_cast<double>(identification.time_ns - fates.first_time_ns) * 1e-9,
                   unit_and_address(message), repetitions(identification.count));

    fmt::print("\nTables\n");
    for (const csv_file* const table : tables)
        fmt::print("  {:>9} rows  {}\n", table->rows(), table->path().string());
    if (tables.empty())
        fmt::print("  none: the capture holds no NCOM (UDP port 3000) and no RCOM (UDP port 3003) "
                   "to decode\n");
}

} // namespace rtrange
