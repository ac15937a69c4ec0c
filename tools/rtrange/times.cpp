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

/// Parses seconds of a minute: two digits and any number of decimals.
std::optional<std::uint64_t> parse_seconds_of_minute(std::string_view text) {
    const auto is_digit = [](char character) { return character >= '0' && character <= '9'; };
    if (text.size() < 2 || !is_digit(text[0]) || !is_digit(text[1]))
        return std::nullopt;
    return parse_seconds(text, 60);
}

/// Parses "1:30" and "1:02:30.5". Returns nanoseconds.
std::optional<std::uint64_t> parse_minutes(std::string_view text) {
    constexpr std::size_t most_digits = 6;
    const std::size_t colon = text.find(':');
    if (colon == 0 || colon > most_digits)
        return std::nullopt;
    const auto first = take_number(text, colon);
    take_one_of(text, ":");
    const bool has_hours = text.find(':') != std::string_view::npos;
    const auto second = has_hours ? take_number(text, 2) : 0;
    const bool complete = !has_hours || take_one_of(text, ":");
    const auto seconds = parse_seconds_of_minute(text);
    if (!first || !second || *second > 59 || !complete || !seconds)
        return std::nullopt;
    const std::uint64_t minutes =
        has_hours ? static_cast<std::uint64_t>(*first) * 60 + static_cast<std::uint64_t>(*second)
                  : static_cast<std::uint64_t>(*first);
    return minutes * 60 * nanoseconds_per_second + *seconds;
}

/// Removes an offset from UTC, such as "+01:00" or "-0530", from the end of a time. Returns it in
/// minutes; nothing if there is none.
std::optional<int> take_zone_offset(std::string_view& text) {
    constexpr std::size_t date_size = 10; // which contains dashes
    constexpr int longest_hours = 14;
    const std::size_t sign = text.find_last_of("+-");
    if (sign == std::string_view::npos || sign < date_size)
        return std::nullopt;
    std::string_view offset = text.substr(sign + 1);
    const auto hours = take_number(offset, 2);
    take_one_of(offset, ":");
    const auto minutes = take_number(offset, 2);
    if (!hours || *hours > longest_hours || !minutes || *minutes > 59 || !offset.empty())
        return std::nullopt;
    const int offset_minutes = *hours * 60 + *minutes;
    const bool is_west = text[sign] == '-';
    text = text.substr(0, sign);
    if (text.ends_with(' '))
        text.remove_suffix(1);
    return is_west ? -offset_minutes : offset_minutes;
}

std::optional<std::uint64_t> parse_utc(std::string_view text) {
    const auto offset_minutes = take_zone_offset(text);
    if (!offset_minutes)
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
    if (!date.ok() || *hour > 23 || *minute > 59)
        return std::nullopt;
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    const auto minutes =
        (std::int64_t{days} * 24 + *hour) * 60 + *minute - offset_minutes.value_or(0);
    // In UTC, and with seconds that may have been rounded up to the next minute.
    constexpr auto end = std::chrono::sys_days(std::chrono::year(2501) / 1 / 1);
    const auto seconds = minutes * 60 + static_cast<std::int64_t>(*second / nanoseconds_per_second);
    if (minutes < 0 || seconds >= std::chrono::seconds(end.time_since_epoch()).count())
        return std::nullopt;
    return static_cast<std::uint64_t>(minutes) * 60 * nanoseconds_per_second + *second;
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
    if (const auto time = parse_minutes(text))
        return run_time{*time, true};
    if (const auto utc = parse_utc(text))
        return run_time{*utc, false};
    return std::nullopt;
}

} // namespace rtrange
