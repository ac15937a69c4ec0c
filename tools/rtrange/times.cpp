#include "tools/rtrange/times.hpp"

#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
#include <system_error>

#include <fmt/chrono.h>

namespace rtrange {
namespace {

constexpr std::uint64_t nanoseconds_per_second = 1'000'000'000;

/// Removes a number of exactly `digits` digits from the start of a text, and returns it.
std::optional<int> take_number(std::string_view& text, std::size_t digits) {
    int number = 0;
    const std::string_view part = text.substr(0, digits);
    const auto end = part.data() + part.size();
    if (part.size() < digits || part.front() == '-' ||
        std::from_chars(part.data(), end, number).ptr != end)
        return std::nullopt;
    text.remove_prefix(digits);
    return number;
}

/// Removes the first character of a text if it is one of these.
bool take_one_of(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

/// Parses seconds with any number of decimals. Returns nanoseconds.
std::optional<std::uint64_t> parse_seconds(std::string_view text, double limit) {
    double seconds = 0;
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    if (error != std::errc() || rest != end || std::signbit(seconds) || !(seconds < limit))
        return std::nullopt;
    return static_cast<std::uint64_t>(std::llround(seconds * 1e9));
}

std::optional<std::uint64_t> parse_utc(std::string_view text) {
    for (const std::string_view zone : {"Z", " UTC"})
        if (text.ends_with(zone))
            text.remove_suffix(zone.size());
    const auto year = take_number(text, 4);
    const bool dash = take_one_of(text, "-");
    const auto month = take_number(text, 2);
    const bool second_dash = take_one_of(text, "-");
    const auto day = take_number(text, 2);
    const bool gap = take_one_of(text, "T ");
    const auto hour = take_number(text, 2);
    const bool colon = take_one_of(text, ":");
    const auto minute = take_number(text, 2);
    const bool second_colon = take_one_of(text, ":");
    const auto second = parse_seconds(text, 60);
    if (!year || !dash || !month || !second_dash || !day || !gap || !hour || !colon || !minute ||
        !second_colon || !second)
        return std::nullopt;

    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok() || *year < 1970 || *year > 2500 || *hour > 23 || *minute > 59)
        return std::nullopt;
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    const auto minutes =
        (static_cast<std::uint64_t>(days) * 24 + static_cast<std::uint64_t>(*hour)) * 60 +
        static_cast<std::uint64_t>(*minute);
    return minutes * 60 * nanoseconds_per_second + *second;
}

} // namespace

std::string utc_text(std::uint64_t time_ns) {
    const auto seconds = static_cast<std::time_t>(time_ns / nanoseconds_per_second);
    const std::uint64_t milliseconds = time_ns / 1'000'000 % 1000;
    return fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03} UTC", fmt::gmtime(seconds), milliseconds);
}

std::optional<run_time> parse_time(std::string_view text) {
    constexpr double longest_run_s = 1e9;
    if (const auto seconds = parse_seconds(text, longest_run_s))
        return run_time{*seconds, true};
    if (const auto utc = parse_utc(text))
        return run_time{*utc, false};
    return std::nullopt;
}

} // namespace rtrange
