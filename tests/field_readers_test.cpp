// The decoder's readers of wire fields.

#include <bit>
#include <cstdint>
#include <cstring>

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

} // namespace
