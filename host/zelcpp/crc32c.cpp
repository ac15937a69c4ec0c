#include "zelcpp/crc32c.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::utility::crc32c {
namespace {

/// Bytes per step.
constexpr std::size_t stride = 8;

/// tables[n][byte] is the register after `byte` and then n zero bytes.
using table_set = std::array<std::array<std::uint32_t, 256>, stride>;

constexpr table_set make_tables() {
    constexpr std::uint32_t reflected_polynomial = 0x82F63B78;
    table_set tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc & 1) != 0 ? reflected_polynomial : 0);
        tables[0][byte] = crc;
    }
    for (std::size_t n = 1; n < stride; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t crc = tables[n - 1][byte];
            tables[n][byte] = crc >> 8 ^ tables[0][crc & 0xFF];
        }
    return tables;
}

constexpr table_set tables = make_tables();

/// The register after eight more bytes. Faster than eight single steps, because the table look-ups
/// do not depend on each other.
std::uint32_t take_stride(std::uint32_t crc, const std::uint8_t* data) {
    return tables[7][(crc ^ data[0]) & 0xFF] ^ tables[6][(crc >> 8 ^ data[1]) & 0xFF] ^
           tables[5][(crc >> 16 ^ data[2]) & 0xFF] ^ tables[4][crc >> 24 ^ data[3]] ^
           tables[3][data[4]] ^ tables[2][data[5]] ^ tables[1][data[6]] ^ tables[0][data[7]];
}

} // namespace

std::uint32_t checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed) {
    std::uint32_t crc = seed;
    for (; size >= stride; data += stride, size -= stride)
        crc = take_stride(crc, data);
    for (std::size_t i = 0; i < size; ++i)
        crc = crc >> 8 ^ tables[0][(crc ^ data[i]) & 0xFF];
    return ~crc;
}

} // namespace zel::utility::crc32c
