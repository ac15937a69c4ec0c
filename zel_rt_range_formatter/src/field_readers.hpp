// Readers of little-endian wire fields. The caller has checked that the bytes are there.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zel::toolbox::rt_range {

static_assert(std::endian::native == std::endian::little, "fields are loaded as they stand");

/// A field as wide as T.
template <typename T>
T load(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

/// Unsigned field of `n` bytes in 32 bits: of a longer field only the first four bytes count.
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

/// Two's-complement field of `n` bytes in 32 bits; a field of more than four bytes is cut to its
/// first four.
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

/// A constant of up to 20 bits to divide whole numbers of up to 24 bits by. It takes two
/// multiplications and an addition, a fraction of a division's time, and yet gives the quotient to
/// the last bit: the product with the upper part of the reciprocal is exact, and the rest of the
/// reciprocal is so small that its rounding errors never reach from a quotient to the middle
/// between two doubles.
class short_divisor {
public:
    consteval short_divisor(double divisor)
        : upper_(
              std::bit_cast<double>(std::bit_cast<std::uint64_t>(1.0 / divisor) & upper_29_bits)),
          rest_((1.0 - upper_ * divisor) / divisor) {}

    /// `value` over the divisor; a zero has the divisor's sign.
    constexpr double quotient(std::int32_t value) const {
        return static_cast<double>(value) * upper_ + static_cast<double>(value) * rest_;
    }

private:
    static constexpr std::uint64_t upper_29_bits = ~std::uint64_t{0xFFFFFF};

    double upper_;
    double rest_; ///< of the same sign
};

/// Unsigned field of two or three bytes over `divisor`.
inline double scaled_unsigned(const std::uint8_t* bytes, std::size_t n, short_divisor divisor) {
    return divisor.quotient(static_cast<std::int32_t>(read_unsigned(bytes, n)));
}

/// Two's-complement field of two or three bytes over `divisor`; a negative divisor turns the axis
/// round and makes a zero negative.
inline double scaled_signed(const std::uint8_t* bytes, std::size_t n, short_divisor divisor) {
    return divisor.quotient(read_signed(bytes, n));
}

/// Unsigned field of four bytes over `divisor`.
inline double scaled_unsigned_32(const std::uint8_t* bytes, double divisor) {
    return static_cast<double>(read_unsigned(bytes, 4)) / divisor;
}

/// Two's-complement field of four bytes over `divisor`; as for the shorter ones, zeros have the
/// divisor's sign.
inline double scaled_signed_32(const std::uint8_t* bytes, double divisor) {
    return static_cast<double>(read_signed(bytes, 4)) / divisor;
}

/// 16-bit unsigned field as it stands.
inline std::uint16_t read_u16(const std::uint8_t* bytes) {
    return load<std::uint16_t>(bytes);
}

/// 16-bit two's-complement field as it stands.
inline std::int16_t read_s16(const std::uint8_t* bytes) {
    return load<std::int16_t>(bytes);
}

} // namespace zel::toolbox::rt_range
