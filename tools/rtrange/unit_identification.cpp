#include "tools/rtrange/unit_identification.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {
namespace {

/// Reads the rest of a message, "(195.0.0.10).".
std::optional<std::uint32_t> parse_address(const char* text) {
    std::array<unsigned, 4> bytes{};
    if (std::sscanf(text, "(%3u.%3u.%3u.%3u)", &bytes[0], &bytes[1], &bytes[2], &bytes[3]) != 4 ||
        std::ranges::any_of(bytes, [](unsigned byte) { return byte > 0xFF; }))
        return std::nullopt;
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | bytes[3] << 24;
}

} // namespace

std::optional<identified_unit> parse_identification(const char* message) {
    using namespace zel::toolbox::rt_range;
    constexpr std::string_view introduction = "Successfully identified IP for ";
    if (!std::string_view(message).starts_with(introduction))
        return std::nullopt;
    const char* const name = message + introduction.size();
    unsigned target = 0;
    int name_size = 0;
    const bool is_target = std::sscanf(name, "target %1u %n", &target, &name_size) == 1;
    if (is_target ? target < 1 || target > target_count
                  : !std::string_view(name).starts_with("hunter"))
        return std::nullopt;
    if (!is_target)
        name_size = static_cast<int>(std::string_view("hunter").size());
    const auto address = parse_address(name + name_size);
    if (!address)
        return std::nullopt;
    return identified_unit{is_target ? target : hunter, *address};
}

} // namespace rtrange
