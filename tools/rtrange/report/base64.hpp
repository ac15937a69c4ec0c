// Base64 encoding.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace rtrange {

/// Appends the bytes in base64, with padding and without line breaks.
void append_base64(std::span<const std::uint8_t> bytes, std::string& text);

} // namespace rtrange
