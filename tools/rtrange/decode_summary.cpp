#include "tools/rtrange/decode_summary.hpp"

#include <cstdio>
#include <string>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/times.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {
namespace {

std::string unit_name(std::size_t unit) {
    return unit == zel::toolbox::rt_range::hunter ? "hunter" : fmt::format("target {}", unit);
}

std::string repetitions(std::uint64_t count) {
    return count > 1 ? fmt::format(", identified {} times", count) : "";
}

} // namespace

std::vector<counted_outcome> counted_outcomes(const frame_outcomes& outcomes) {
    std::vector<counted_outcome> result{
        {outcomes.decoded, "decoded"},
        {outcomes.not_ipv4, "foreign: not IPv4"},
        {outcomes.not_udp, "foreign: not UDP"},
        {outcomes.other_ports, "foreign: other UDP ports"},
        {outcomes.ignored_rcom, "ignored: RCOM packets without decoded content"},
    };
    for (const auto& [source_line, remark] : outcomes.refusals)
        result.push_back({remark.count, fmt::format("refused: {}", remark.message)});
    for (const auto& [source_line, remark] : outcomes.decoded_in_part)
        result.push_back({remark.count, fmt::format("decoded, but: {}", remark.message)});
    result.push_back({outcomes.cut, "cut short when recorded; record whole frames (tcpdump -s 0)"});
    std::erase_if(result, [](const counted_outcome& outcome) { return outcome.count == 0; });
    return result;
}

void print_summary(const frame_outcomes& outcomes, const std::vector<written_table>& tables) {
    const double seconds =
        static_cast<double>(outcomes.last_time_ns - outcomes.first_time_ns) * 1e-9;
    print("{} frames, {:.3f} s from {}\n", outcomes.frames, seconds,
          utc_text(outcomes.first_time_ns));

    print("\nFrames\n");
    for (const auto& [count, what] : counted_outcomes(outcomes))
        print("  {:>9}  {}\n", count, what);
    if (outcomes.steps_back == 1)
        print("  {:>9}  step back in time, at {}; it restarts the decoder\n", 1,
              utc_text(outcomes.first_steps_back.front().to_ns));
    else if (outcomes.steps_back > 1)
        print("  {:>9}  steps back in time, the first at {}; each restarts the decoder\n",
              outcomes.steps_back, utc_text(outcomes.first_steps_back.front().to_ns));

    if (!outcomes.identifications.empty())
        print("\nUnits\n");
    for (const auto& [identified, identification] : outcomes.identifications)
        print("  {:9.3f} s  {} ({}){}\n",
              static_cast<double>(identification.time_ns - outcomes.first_time_ns) * 1e-9,
              unit_name(identified.unit), ipv4_text(identified.address),
              repetitions(identification.count));

    if (!tables.empty())
        print("\nOutput\n");
    for (const written_table& table : tables)
        print("  {:>9} {}  {}\n", table.rows, table.rows == 1 ? "row" : "rows", table.place);
}

int end_with_faults(const std::vector<std::string>& faults) {
    std::fflush(stdout);
    for (const std::string& fault : faults)
        std::fprintf(stderr, "rtrange: %s\n", fault.c_str());
    return faults.empty() ? exit_success : exit_failure;
}

} // namespace rtrange
