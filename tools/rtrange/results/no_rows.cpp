#include "tools/rtrange/results/no_rows.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/tables/table.hpp"
#include "tools/rtrange/times.hpp"

namespace rtrange {
namespace {

/// The options of the selection, as the user may have written them.
std::string options_text(const selection_options& options) {
    std::string text;
    const auto add = [&](std::string_view name, std::string_view value) {
        if (!value.empty())
            text += fmt::format("{}{} {}", text.empty() ? "" : " ", name, value);
    };
    add("--fields", fmt::format("{}", fmt::join(options.fields, ",")));
    add("--units", fmt::format("{}", fmt::join(options.units, ",")));
    add("--from", options.from);
    add("--to", options.to);
    return text;
}

std::string reason_for_none_decoded(const frame_outcomes& outcomes) {
    if (!outcomes.refusals.empty() && outcomes.refused_whole == 0)
        return "every NCOM and RCOM frame was refused: the recorder cut the frames short; record "
               "whole frames";
    if (!outcomes.refusals.empty()) {
        const auto most_frequent = std::ranges::max_element(
            outcomes.refusals, {}, [](const auto& entry) { return entry.second.count; });
        const frame_outcomes::remark& remark = most_frequent->second;
        return fmt::format("every NCOM and RCOM frame was refused, {} of them with \"{}\"",
                           remark.count, remark.message);
    }
    if (outcomes.ignored_rcom > 0)
        return "the only packets were RCOM packets of types without decoded content";
    return fmt::format(
        "there was no NCOM (UDP port 3000) and no RCOM (UDP port 3003) among {} frames",
        outcomes.frames);
}

/// A time of the run in the way in which the user gave another one.
std::string time_text(std::uint64_t time_ns, const run_time& like, std::uint64_t start_ns) {
    if (!like.since_start)
        return utc_text(time_ns);
    return fmt::format("{:.2f} s", static_cast<double>(time_ns - start_ns) * 1e-9);
}

std::string units_text(const frame_decoder& decoder) {
    std::vector<std::string_view> units;
    for (std::size_t table = 0; table < table_count; ++table)
        if (decoder.has_rows(table) &&
            (units.empty() || units.back() != table_descriptions()[table].unit))
            units.push_back(table_descriptions()[table].unit);
    return fmt::format("{}", fmt::join(units, ", "));
}

std::string what_there_was(const frame_decoder& decoder, const run_options& options) {
    const frame_outcomes& outcomes = decoder.outcomes();
    const std::uint64_t start_ns = outcomes.first_time_ns, end_ns = outcomes.last_time_ns;
    const bool several = options.captures.size() > 1;
    const char* const captures = several ? "the captures" : "the capture";
    const auto absolute = [&](const run_time& time) {
        return time.time_ns + (time.since_start ? start_ns : 0);
    };
    if (const auto from = parse_time(options.selection.from); from && absolute(*from) > end_ns)
        return fmt::format("{} end{} at {}", captures, several ? "" : "s",
                           time_text(end_ns, *from, start_ns));
    if (const auto to = parse_time(options.selection.to); to && absolute(*to) <= start_ns)
        return fmt::format("{} start{} at {}", captures, several ? "" : "s",
                           time_text(start_ns, *to, start_ns));
    return fmt::format("{} {} rows of {}, and end{} at {:.2f} s", captures,
                       several ? "have" : "has", units_text(decoder), several ? "" : "s",
                       static_cast<double>(end_ns - start_ns) * 1e-9);
}

std::string reason_for_no_rows(const frame_decoder& decoder, const run_options& options) {
    if (decoder.outcomes().decoded == 0)
        return fmt::format("no rows: {}", reason_for_none_decoded(decoder.outcomes()));
    return fmt::format("no rows match {}: {}", options_text(options.selection),
                       what_there_was(decoder, options));
}

} // namespace

void end_without_rows(const frame_decoder& decoder, const run_options& options,
                      const std::vector<std::string>& faults) {
    if (decoder.rows() > 0)
        return;
    print_summary(decoder, {});
    end_with_faults(faults);
    throw failure(reason_for_no_rows(decoder, options));
}

} // namespace rtrange
