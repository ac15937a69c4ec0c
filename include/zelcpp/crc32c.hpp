// CRC-32C of the host's utility library zelcpp.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::utility::crc32c {

/// CRC-32C (Castagnoli, reflected polynomial 0x82F63B78) of `size` bytes at `data`. `seed` is the
/// initial register; the result is inverted. With seed 0xFFFFFFFF the text "123456789" gives
/// 0xE3069283.
std::uint32_t checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed);

} // namespace zel::utility::crc32c
