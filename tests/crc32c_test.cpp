// The host's CRC-32C.

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>

#include <gtest/gtest.h>

#include "zelcpp/crc32c.hpp"

namespace {

std::uint32_t crc_of(const std::string& text, std::uint32_t seed = 0xFFFFFFFF) {
    return zel::utility::crc32c::checksum(reinterpret_cast<const std::uint8_t*>(text.data()),
                                          text.size(), seed);
}

TEST(crc32c, published_values) {
    EXPECT_EQ(crc_of("123456789"), 0xE3069283U);
    // The examples of RFC 3720, appendix B.4, in the byte order of a number.
    EXPECT_EQ(crc_of(std::string(32, '\0')), 0x8A9136AAU);
    EXPECT_EQ(crc_of(std::string(32, '\xFF')), 0x62A8AB43U);
    std::string ascending(32, '\0');
    std::iota(ascending.begin(), ascending.end(), '\0');
    EXPECT_EQ(crc_of(ascending), 0x46DD794EU);
    EXPECT_EQ(crc_of(""), 0U);
}

TEST(crc32c, the_seed_continues_an_earlier_part) {
    const std::string text = "123456789 123456789 123456789";
    for (std::size_t split = 0; split <= text.size(); ++split)
        EXPECT_EQ(crc_of(text.substr(split), ~crc_of(text.substr(0, split))), crc_of(text))
            << "split at " << split;
}

} // namespace
