#include "tools/rtrange/report/base64.hpp"

#include <cstddef>
#include <string_view>

namespace rtrange {
namespace {

constexpr std::string_view digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Appends the four digits of three bytes.
void append_group(std::uint32_t group, std::string& text) {
    for (int shift = 18; shift >= 0; shift -= 6)
        text += digits[group >> shift & 0x3F];
}

} // namespace

void append_base64(std::span<const std::uint8_t> bytes, std::string& text) {
    text.reserve(text.size() + (bytes.size() + 2) / 3 * 4);
    for (; bytes.size() >= 3; bytes = bytes.subspan(3))
        append_group(std::uint32_t{bytes[0]} << 16 | std::uint32_t{bytes[1]} << 8 | bytes[2], text);
    if (bytes.empty())
        return;
    const std::size_t padding = 3 - bytes.size();
    const std::uint32_t second = bytes.size() == 2 ? bytes[1] : 0U;
    append_group(std::uint32_t{bytes[0]} << 16 | second << 8, text);
    text.replace(text.size() - padding, padding, padding, '=');
}

} // namespace rtrange
