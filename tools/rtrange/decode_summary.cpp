#include "tools/rtrange/decode_summary.hpp"

#include <cstdio>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/times.hpp"

namespace rtrange {
namespace {

std::string repetitions(std::uint64_t count) {
    return count > 1 ? fmt::format(", named {} times", count) : "";
}

} // namespace

std::vector<counted_fate> counted_fates(const frame_fates& fates) {
    std::vector<counted_fate> result{
        {fates.decoded, "decoded"},
        {fates.not_ipv4, "foreign: not IPv4"},
        {fates.not_udp, "foreign: not UDP"},
        {fates.other_ports, "foreign: other UDP ports"},
        {fates.ignored_rcom, "ignored: RCOM packets without decoded content"},
    };
    for (const auto& [place, remark] : fates.refusals)
        result.push_back({remark.count, fmt::format("refused: {}", remark.message)});
    for (const auto& [place, remark] : fates.decoded_in_part)
        result.push_back({remark.count, fmt::format("decoded, but: {}", remark.message)});
    result.push_back({fates.cut, "cut short when recorded; record whole frames (tcpdump -s 0)"});
    std::erase_if(result, [](const counted_fate& fate) { return fate.count == 0; });
    return result;
}

std::string unit_and_address(std::string_view message) {
    constexpr std::string_view introduction = "Successfully identified IP for ";
    if (message.starts_with(introduction))
        message.remove_prefix(introduction.size());
    if (message.ends_with('.'))
        message.remove_suffix(1);
    // The decoder leaves a space before a target's address only.
    constexpr std::string_view hunter = "hunter";
    if (message.starts_with("hunter("))
        return fmt::format("{} {}", hunter, message.substr(hunter.size()));
    return std::string(message);
}

std::string_view reason_for_no_rows(const frame_fates& fates) {
    if (fates.decoded > 0)
        return "the selection leaves nothing of what was decoded";
    if (!fates.refusals.empty())
        return "every NCOM and RCOM frame was refused";
    if (fates.ignored_rcom > 0)
        return "there was no packet but RCOM of types without decoded content";
    return "there was no NCOM (UDP port 3000) and no RCOM (UDP port 3003)";
}

void print_summary(const frame_fates& fates, const std::vector<written_table>& tables) {
    const double seconds = static_cast<double>(fates.last_time_ns - fates.first_time_ns) * 1e-9;
    fmt::print("{} frames, {:.3f} s from {}\n", fates.frames, seconds,
               utc_text(fates.first_time_ns));

    fmt::print("\nFrames\n");
    for (const auto& [count, what] : counted_fates(fates))
        fmt::print("  {:>9}  {}\n", count, what);
    if (fates.steps_back > 0)
        fmt::print("  {:>9}  steps back in time, the first at {}; each restarts the decoder\n",
                   fates.steps_back, utc_text(fates.first_steps_back.front().to_ns));

    if (!fates.identifications.empty())
        fmt::print("\nUnits\n");
    for (const auto& [message, identification] : fates.identifications)
        fmt::print("  {:9.3f} s  {}{}\n",
                   static_cast<double>(identification.time_ns - fates.first_time_ns) * 1e-9,
                   unit_and_address(message), repetitions(identification.count));

    fmt::print("\nOutput\n");
    for (const written_table& table : tables)
        fmt::print("  {:>9} {}  {}\n", table.rows, table.rows == 1 ? "row" : "rows", table.place);
    if (tables.empty())
        fmt::print("  none: {}\n", reason_for_no_rows(fates));
}

int end_with_faults(const std::vector<std::string>& faults) {
    std::fflush(stdout);
    for (const std::string& fault : faults)
        std::fprintf(stderr, "rtrange: %s; what came before is decoded\n", fault.c_str());
    return faults.empty() ? exit_success : exit_failure;
}

} // namespace rtrange
