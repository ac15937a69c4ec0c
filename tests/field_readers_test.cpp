// The decoder's readers of wire fields.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

#include <gtest/gtest.h>

#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace {

using namespace zel::toolbox::rt_range;

/// How many fields of `width` bytes come out with other bits than a division gives them.
std::uint32_t differences(std::size_t width, double divisor, short_divisor fast) {
    std::uint32_t count = 0;
    for (std::uint32_t bits = 0; bits < std::uint32_t{1} << (8 * width); ++bits) {
        std::uint8_t field[4];
        std::memcpy(field, &bits, sizeof(field));
        const double expected = read_signed(field, width) / divisor;
        const auto as_bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
        if (as_bits(scaled_signed(field, width, fast)) != as_bits(expected))
            ++count;
    }
    return count;
}

TEST(field_readers, a_short_divisor_divides_every_field_to_the_last_bit) {
    EXPECT_EQ(differences(2, -10.0, -10.0), 0U);
    EXPECT_EQ(differences(2, 100.0, 100.0), 0U);
    EXPECT_EQ(differences(2, -100.0, -100.0), 0U);
    EXPECT_EQ(differences(2, -1000.0, -1000.0), 0U);
    EXPECT_EQ(differences(2, 10000.0, 10000.0), 0U);
    EXPECT_EQ(differences(3, 10000.0, 10000.0), 0U);
    EXPECT_EQ(differences(3, 100000.0, 100000.0), 0U);
    EXPECT_EQ(differences(3, 1000000.0, 1000000.0), 0U);
}

TEST(field_readers, the_last_byte_of_a_field_holds_its_sign) {
    const std::uint8_t bytes[] = {0xF1, 0xE2, 0xD3, 0x84, 0x05};
    const std::uint32_t expected_unsigned[] = {0xF1, 0xE2F1, 0xD3E2F1, 0x84D3E2F1, 0x84D3E2F1};
    const std::int32_t expected_signed[] = {-0x0F, -0x1D0F, -0x2C1D0F, -0x7B2C1D0F, -0x7B2C1D0F};
    for (std::size_t width = 1; width <= std::size(bytes); ++width) {
        EXPECT_EQ(read_unsigned(bytes, width), expected_unsigned[width - 1]) << width;
        EXPECT_EQ(read_signed(bytes, width), expected_signed[width - 1]) << width;
    }
    const std::uint8_t positive[] = {0x7F, 0x80, 0x7F, 0x00};
    EXPECT_EQ(read_signed(positive, 1), 0x7F);
    EXPECT_EQ(read_signed(positive, 3), 0x7F807F);
}

TEST(field_readers, a_floating_point_field_has_four_or_eight_bytes) {
    const std::uint8_t minus_two[] = {0, 0, 0, 0, 0, 0, 0, 0xC0};
    EXPECT_EQ(read_float(minus_two + 4, 4), -2.0);
    EXPECT_EQ(read_float(minus_two, 8), -2.0);
    EXPECT_EQ(read_float(minus_two + 4, 2), 0.0);
}

} // namespace
