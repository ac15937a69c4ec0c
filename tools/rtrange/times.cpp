#include "tools/rtrange/times.hpp"

#include <ctime>

#include <fmt/chrono.h>

namespace rtrange {

std::string utc_text(std::uint64_t time_ns) {
    const auto seconds = static_cast<std::time_t>(time_ns / 1'000'000'000);
    const std::uint64_t milliseconds = time_ns / 1'000'000 % 1000;
    return fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03} UTC", fmt::gmtime(seconds), milliseconds);
}

} // namespace rtrange
