// IPv4 addresses as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <fmt/format.h>

namespace rtrange {

/// Length of the longest address, "255.255.255.255".
inline constexpr std::size_t longest_ipv4 = 15;

/// Writes an address, for example "195.0.0.10", at `out`, where there is room for the longest one,
/// and returns its end. The bytes of `address` stand as on the wire.
inline char* format_ipv4(std::uint32_t address, char* out) {
    return fmt::format_to(out, "{}.{}.{}.{}", address & 0xFF, address >> 8 & 0xFF,
                          address >> 16 & 0xFF, address >> 24);
}

/// The same as a string.
inline std::string ipv4_text(std::uint32_t address) {
    std::string text(longest_ipv4, '\0');
    text.resize(static_cast<std::size_t>(format_ipv4(address, text.data()) - text.data()));
    return text;
}

} // namespace rtrange
