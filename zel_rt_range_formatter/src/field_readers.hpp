// Readers of little-endian wire fields. The caller has checked the size of the packet.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zel::toolbox::rt_range {

static_assert(std::endian::native == std::endian::little,
              "fields are loaded without swapping bytes");

/// A field with the width of T.
template <typename T>
T load(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

/// Unsigned field of `n` bytes as 32 bits; of a longer field, the first four bytes.
inline std::uint32_t read_unsigned(const std::uint8_t* bytes, std::size_t n) {
    switch (n) {
    case 1:
        return bytes[0];
    case 2:
        return load<std::uint16_t>(bytes);
    case 3:
        return std::uint32_t{bytes[2]} << 16 | load<std::uint16_t>(bytes);
    default:
        return load<std::uint32_t>(bytes);
    }
}

/// Two's complement field of `n` bytes as 32 bits; of a longer field, the first four bytes.
inline std::int32_t read_signed(const std::uint8_t* bytes, std::size_t n) {
    switch (n) {
    case 1:
        return static_cast<std::int8_t>(bytes[0]);
    case 2:
        return load<std::int16_t>(bytes);
    case 3:
        return static_cast<std::int8_t>(bytes[2]) * 0x10000 + load<std::uint16_t>(bytes);
    default:
        return load<std::int32_t>(bytes);
    }
}

/// IEEE single (`n` = 4, widened) or double (`n` = 8); 0.0 for any other `n`.
inline double read_float(const std::uint8_t* bytes, std::size_t n) {
    if (n == 4)
        return load<float>(bytes);
    if (n == 8)
        return load<double>(bytes);
    return 0.0;
}

/// Bit `n` of a byte.
constexpr std::uint8_t bit_of(std::uint8_t byte, unsigned n) {
    return static_cast<std::uint8_t>(byte >> n & 1);
}

/// A divisor of up to 20 bits for integers of up to 24 bits. Two multiplications and an addition
/// take a fraction of the time of a division, and the quotient is still correctly rounded: the
/// product with the upper part of the reciprocal is exact, and the remaining part is so small that
/// its rounding error never moves a quotient across the midpoint between two doubles.
class short_divisor {
public:
    // Unreachable at run time: the compiler calculates both parts.
    consteval short_divisor(double divisor)
        : upper_(
              std::bit_cast<double>(std::bit_cast<std::uint64_t>(1.0 / divisor) & upper_29_bits)),
          rest_((1.0 - upper_ * divisor) / divisor) {}

    /// `value` divided by the divisor; a zero result has the sign of the divisor.
    constexpr double quotient(std::int32_t value) const {
        return static_cast<double>(value) * upper_ + static_cast<double>(value) * rest_;
    }

private:
    static constexpr std::uint64_t upper_29_bits = ~std::uint64_t{0xFFFFFF};

    double upper_;
    double rest_; ///< has the same sign
};

/// Unsigned field of `n` bytes, divided by `divisor`.
inline double scaled_unsigned(const std::uint8_t* bytes, std::size_t n, double divisor) {
    return static_cast<double>(read_unsigned(bytes, n)) / divisor;
}

/// Two's complement field of `n` bytes, divided by `divisor`. A negative divisor reverses the axis,
/// and turns 0 into -0.
inline double scaled_signed(const std::uint8_t* bytes, std::size_t n, double divisor) {
    return static_cast<double>(read_signed(bytes, n)) / divisor;
}

/// As above, for a field of two or three bytes. Saves measurable time only in packets with many
/// such fields: NCOM and lane.
inline double scaled_signed(const std::uint8_t* bytes, std::size_t n, short_divisor divisor) {
    return divisor.quotient(read_signed(bytes, n));
}

/// 16-bit unsigned field, not scaled.
inline std::uint16_t read_u16(const std::uint8_t* bytes) {
    return load<std::uint16_t>(bytes);
}

/// 16-bit two's complement field, not scaled.
inline std::int16_t read_s16(const std::uint8_t* bytes) {
    return load<std::int16_t>(bytes);
}

} // namespace zel::toolbox::rt_range
