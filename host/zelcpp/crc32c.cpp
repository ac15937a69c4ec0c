#include "zel/utility/crc32c.hpp"

#include <array>

namespace zel::utility::crc32c {
namespace {

constexpr std::array<std::uint32_t, 256> make_table() {
    constexpr std::uint32_t reflected_polynomial = 0x82F63B78;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc & 1) != 0 ? reflected_polynomial : 0);
        table[byte] = crc;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> table = make_table();

} // namespace

std::uint32_t checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed) {
    std::uint32_t crc = seed;
    for (std::size_t i = 0; i < size; ++i)
        crc = crc >> 8 ^ table[(crc ^ data[i]) & 0xFF];
    return ~crc;
}

} // namespace zel::utility::crc32c
