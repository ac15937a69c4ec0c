// Two texts that bound a selection of rows by time.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "fuzz/input.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/tables/selection.hpp"
#include "tools/rtrange/times.hpp"

namespace {

using namespace rtrange;

constexpr std::uint64_t second_ns = 1'000'000'000;
constexpr std::uint64_t minute_ns = 60 * second_ns;
constexpr std::uint64_t hour_ns = 60 * minute_ns;

/// Seconds of a run are parsed as a floating point number, which is exact to the nanosecond below
/// this time.
constexpr std::uint64_t exact_ns = 1'000'000 * second_ns;

void expect_time(const std::string& text, run_time expected) {
    const auto parsed = parse_time(text);
    ASSERT_TRUE(parsed.has_value()) << text;
    EXPECT_EQ(parsed->time_ns, expected.time_ns) << text;
    EXPECT_EQ(parsed->since_start, expected.since_start) << text;
}

/// Parses a time since the start in the other ways to write it.
void expect_same_since_start(const run_time& time) {
    constexpr std::uint64_t most = 1'000'000; // hours, or minutes
    const std::uint64_t seconds = time.time_ns / second_ns;
    const std::uint64_t decimals = time.time_ns % second_ns;
    if (time.time_ns < exact_ns)
        expect_time(fmt::format("{}.{:09}", seconds, decimals), time);
    if (time.time_ns < most * hour_ns)
        expect_time(fmt::format("{}:{:02}:{:02}.{:09}", seconds / 3600, seconds / 60 % 60,
                                seconds % 60, decimals),
                    time);
    if (time.time_ns < most * minute_ns)
        expect_time(fmt::format("{}:{:02}.{:09}", seconds / 60, seconds % 60, decimals), time);
}

/// "2023-11-14 22:13:20.000+01:00" for the time that clocks show in a zone.
std::string with_zone(std::uint64_t shown_ns, const std::string& zone) {
    std::string text = utc_text(shown_ns);
    return text.replace(text.find(" UTC"), std::string::npos, zone);
}

/// Parses a time in UTC, cut to the milliseconds that are printed, in the other ways to write it.
void expect_same_utc(const run_time& time) {
    const run_time cut{time.time_ns - time.time_ns % 1'000'000, false};
    const std::string text = utc_text(cut.time_ns);
    EXPECT_EQ(utc_text(time.time_ns), text);
    expect_time(text, cut);
    // In one of the zones to the west, and in its counterpart to the east.
    const std::uint64_t offset = cut.time_ns / minute_ns % (15 * 60) * minute_ns;
    if (cut.time_ns < offset)
        return;
    const std::string zone = fmt::format("{:02}:{:02}", offset / hour_ns, offset / minute_ns % 60);
    expect_time(with_zone(cut.time_ns - offset, "-" + zone), cut);
    expect_time(with_zone(cut.time_ns + offset, "+" + zone), cut);
}

std::optional<run_time> expect_sound(const std::string& text) {
    const auto time = parse_time(text);
    const std::string fault = fault_of_time(text);
    EXPECT_EQ(fault.empty(), time.has_value());
    // It quotes the text.
    EXPECT_EQ(std::ranges::count(fault, '\n'), time ? 0 : std::ranges::count(text, '\n'));
    if (time && time->since_start)
        expect_same_since_start(*time);
    else if (time)
        expect_same_utc(*time);
    return time;
}

/// The limits that `selection` should have.
bool is_selected(std::uint64_t at_ns, std::uint64_t start_ns, const std::optional<run_time>& from,
                 const std::optional<run_time>& to) {
    const auto limit = [start_ns](const run_time& time) {
        return time.time_ns + (time.since_start ? start_ns : 0);
    };
    return (!from || at_ns >= limit(*from)) && (!to || at_ns < limit(*to));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::input input({data, size});
    selection_options options;
    options.from = input.text();
    options.to = input.text();
    const auto from = expect_sound(options.from);
    const auto to = expect_sound(options.to);
    // Without an argument, there is no limit.
    if ((!from && !options.from.empty()) || (!to && !options.to.empty()))
        return 0;
    const bool is_reversed =
        from && to && from->since_start == to->since_start && from->time_ns >= to->time_ns;
    std::optional<selection> rows;
    try {
        rows.emplace(options);
    } catch (const usage_failure& fault) {
        EXPECT_EQ(std::string_view(fault.what()), "--from must be before --to");
    }
    EXPECT_EQ(rows.has_value(), !is_reversed);
    if (!rows)
        return 0;
    constexpr std::uint64_t start_ns = 1'700'000'000 * second_ns;
    std::array<std::uint64_t, 8> times{0, start_ns - 1, start_ns};
    auto* next = times.data() + 3;
    for (const auto& limit : {from, to})
        if (limit)
            for (const unsigned before : {1U, 0U})
                *next++ = limit->time_ns + (limit->since_start ? start_ns : 0) - before;
    for (const std::uint64_t time : times)
        EXPECT_EQ(rows->ends_before(time, start_ns), to && !is_selected(time, start_ns, {}, to));
    rows->set_start(start_ns);
    for (const std::uint64_t time : times) {
        EXPECT_EQ(rows->contains(time), is_selected(time, start_ns, from, to));
        EXPECT_EQ(rows->ends_before(time), to && !is_selected(time, start_ns, {}, to));
    }
    return 0;
}
