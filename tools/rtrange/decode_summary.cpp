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

std::string text_of(const frame_outcomes::remark& remark) {
    return fmt::format("{} (first: frame {} of {})", remark.message, remark.first_frame,
                       remark.capture);
}

double seconds_after(std::uint64_t zero_ns, std::uint64_t time_ns) {
    return static_cast<double>(static_cast<std::int64_t>(time_ns - zero_ns)) * 1e-9;
}

/// A rounded value, which is not negative if it is zero: "-0.04" with one decimal is "0.0".
std::string rounded(double value, int decimals) {
    const std::string text = fmt::format("{:.{}f}", value, decimals);
    return text.find_first_of("123456789") == std::string::npos && text.starts_with('-')
               ? text.substr(1)
               : text;
}

void print_key_figures(const std::vector<unit_figures>& units) {
    for (const auto& [unit, figures] : units)
        for (const auto& [figure, value, time_s] : figures) {
            print("  {:<{}}  {:<30}  ", unit, longest_ipv4, figure->title);
            if (value)
                print("{:>9} {:<5}  at {:9.3f} s\n", rounded(*value, figure->decimals),
                      figure->unit, time_s);
            else
                print("never approached\n");
        }
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
    for (const auto& [key, remark] : outcomes.refusals)
        result.push_back({remark.count, fmt::format("refused: {}", text_of(remark))});
    for (const auto& [key, remark] : outcomes.decoded_in_part)
        result.push_back({remark.count, fmt::format("decoded, but: {}", text_of(remark))});
    result.push_back({outcomes.cut, "cut short when recorded; record whole frames (tcpdump -s 0)"});
    std::erase_if(result, [](const counted_outcome& outcome) { return outcome.count == 0; });
    return result;
}

std::vector<std::string> run_notes(const frame_decoder& decoder) {
    const frame_outcomes& outcomes = decoder.outcomes();
    const std::uint64_t zero_ns = outcomes.first_time_ns;
    std::vector<std::string> notes;
    notes.reserve(outcomes.first_restarts.size());
    for (const auto& [from_ns, to_ns] : outcomes.first_restarts)
        notes.push_back(
            fmt::format("A new decoder was started at {:.3f} s, after a gap of {:.3f} s",
                        seconds_after(zero_ns, to_ns), seconds_after(from_ns, to_ns)));
    if (outcomes.restarts > outcomes.first_restarts.size())
        notes.push_back(fmt::format("In all, {} new decoders were started", outcomes.restarts));
    for (std::string& note : decoder.notes())
        notes.push_back(std::move(note));
    return notes;
}

void print_summary(const frame_decoder& decoder, const std::vector<written_table>& tables,
                   const std::vector<unit_figures>& figures) {
    const frame_outcomes& outcomes = decoder.outcomes();
    print("{} frames, {:.3f} s from {}\n", outcomes.frames,
          seconds_after(outcomes.first_time_ns, outcomes.last_time_ns),
          utc_text(outcomes.first_time_ns));

    print("\nFrames\n");
    for (const auto& [count, what] : counted_outcomes(outcomes))
        print("  {:>9}  {}\n", count, what);

    if (!outcomes.identifications.empty())
        print("\nUnits\n");
    for (const auto& [identified, identification] : outcomes.identifications)
        print("  {:9.3f} s  {} ({}){}\n",
              seconds_after(outcomes.first_time_ns, identification.time_ns),
              unit_name(identified.unit), ipv4_text(identified.address),
              repetitions(identification.count));

    const auto notes = run_notes(decoder);
    if (!notes.empty() || outcomes.steps_back > 0)
        print("\nNotes\n");
    if (outcomes.steps_back > 0)
        print("  {} {}; each resets the decoder\n",
              outcomes.steps_back == 1
                  ? "1 step back in time, at"
                  : fmt::format("{} steps back in time, the first at", outcomes.steps_back),
              utc_text(outcomes.first_steps_back.front().to_ns));
    for (const std::string& note : notes)
        print("  {}\n", note);

    if (!figures.empty())
        print("\nKey figures\n");
    print_key_figures(figures);

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
