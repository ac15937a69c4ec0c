// Times as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rtrange {

/// "2023-11-14 22:13:20.000 UTC" for nanoseconds since 1970.
std::string utc_text(std::uint64_t time_ns);

/// A point in time.
struct run_time {
    std::uint64_t time_ns; ///< since 1970, or since the start of the run
    bool since_start;
};

/// Parses a time since the start of a run: seconds, such as "12.5", minutes and seconds, such as
/// "1:30", or hours, minutes and seconds, such as "1:02:30.5". Or a time in UTC, such as
/// "2023-11-14 22:13:20.5", with or without " UTC", or "2023-11-14T22:13:20Z", or one in another
/// zone, such as "2023-11-14T23:13:20+01:00". Returns nothing for other text and for times before
/// 1970 or after 2500.
std::optional<run_time> parse_time(std::string_view text);

} // namespace rtrange
