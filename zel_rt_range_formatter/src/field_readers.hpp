// Readers of little-endian wire fields. The caller has checked that the bytes are there.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace zel::toolbox::rt_range {

/// Unsigned field of `n` bytes in 32 bits: of a longer field only the first four bytes count.
constexpr std::uint32_t read_unsigned(const std::uint8_t* bytes, std::size_t n) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < n && i < sizeof(value); ++i)
        value |= std::uint32_t{bytes[i]} << (8 * i);
    return value;
}

/// Two's-complement field of `n` bytes in 32 bits; a field of more than four bytes is cut to its
/// first four.
constexpr std::int32_t read_signed(const std::uint8_t* bytes, std::size_t n) {
    std::uint32_t value = read_unsigned(bytes, n);
    if (n < sizeof(value) && bytes[n - 1] >= 0x80)
        value -= std::uint32_t{1} << (8 * n);
    return static_cast<std::int32_t>(value);
}

/// IEEE single (`n` = 4, widened) or double (`n` = 8); 0.0 for any other `n`.
constexpr double read_float(const std::uint8_t* bytes, std::size_t n) {
    if (n == 4)
        return std::bit_cast<float>(read_unsigned(bytes, 4));
    if (n == 8)
        return std::bit_cast<double>(std::uint64_t{read_unsigned(bytes + 4, 4)} << 32 |
                                     read_unsigned(bytes, 4));
    return 0.0;
}

/// Bit `n` of a byte.
constexpr std::uint8_t bit_of(std::uint8_t byte, unsigned n) {
    return static_cast<std::uint8_t>(byte >> n & 1);
}

/// Unsigned field of `n` bytes over `divisor`.
constexpr double scaled_unsigned(const std::uint8_t* bytes, std::size_t n, double divisor) {
    return static_cast<double>(read_unsigned(bytes, n)) / divisor;
}

/// Two's-complement field of `n` bytes over `divisor`; a negative divisor turns the axis round and
/// makes a zero negative.
constexpr double scaled_signed(const std::uint8_t* bytes, std::size_t n, double divisor) {
    return static_cast<double>(read_signed(bytes, n)) / divisor;
}

/// 16-bit unsigned field as it stands.
constexpr std::uint16_t read_u16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(read_unsigned(bytes, 2));
}

/// 16-bit two's-complement field as it stands.
constexpr std::int16_t read_s16(const std::uint8_t* bytes) {
    return static_cast<std::int16_t>(read_signed(bytes, 2));
}

} // namespace zel::toolbox::rt_range
