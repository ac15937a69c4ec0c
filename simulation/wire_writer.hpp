// Encoding of packet fields.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zel::simulation {

using bytes = std::vector<std::uint8_t>;

/// Appends fields to a byte sequence, little-endian unless the name says otherwise.
class wire_writer {
public:
    wire_writer& u8(std::uint8_t value) { return integer(value, 1); }
    wire_writer& u16(std::uint16_t value) { return integer(value, 2); }
    wire_writer& s16(std::int16_t value) { return integer(static_cast<std::uint16_t>(value), 2); }
    wire_writer& s24(std::int32_t value) { return integer(static_cast<std::uint32_t>(value), 3); }
    wire_writer& u32(std::uint32_t value) { return integer(value, 4); }
    wire_writer& s32(std::int32_t value) { return integer(static_cast<std::uint32_t>(value), 4); }
    wire_writer& f32(float value) { return integer(std::bit_cast<std::uint32_t>(value), 4); }
    wire_writer& f64(double value) { return integer(std::bit_cast<std::uint64_t>(value), 8); }
    wire_writer& big_endian_u16(std::uint16_t value) {
        return u8(static_cast<std::uint8_t>(value >> 8)).u8(static_cast<std::uint8_t>(value));
    }
    wire_writer& append(std::span<const std::uint8_t> part) {
        // Not with insert, for which GCC 14 warns of writing out of bounds, wrongly.
        for (const std::uint8_t value : part)
            written_.push_back(value);
        return *this;
    }

    const bytes& written() const { return written_; }

private:
    wire_writer& integer(std::uint64_t value, std::size_t width) {
        for (std::size_t i = 0; i < width; ++i)
            written_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        return *this;
    }

    bytes written_;
};

} // namespace zel::simulation
