#include "simulation/ethernet_frame.hpp"

#include <cstddef>

namespace zel::simulation {
namespace {

constexpr std::uint16_t ethernet_header_size = 14;
constexpr std::uint16_t ip_header_size = 20;
constexpr std::uint16_t udp_header_size = 8;

void write_mac(wire_writer& frame, const ip_address& address) {
    frame.u8(0x02).u8(0x00).append(address); // locally administered
}

/// Ones' complement of the ones' complement sum of the header's 16-bit words.
std::uint16_t ip_checksum(std::span<const std::uint8_t> header) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < header.size(); i += 2)
        sum += std::uint32_t{header[i]} << 8 | header[i + 1];
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint16_t>(~sum);
}

} // namespace

bytes udp_frame(const endpoint& source, const endpoint& destination,
                std::span<const std::uint8_t> payload) {
    const auto udp_size = static_cast<std::uint16_t>(udp_header_size + payload.size());
    wire_writer frame;
    write_mac(frame, destination.address);
    write_mac(frame, source.address);
    frame.big_endian_u16(0x0800);

    frame.u8(0x45).u8(0).big_endian_u16(static_cast<std::uint16_t>(ip_header_size + udp_size));
    frame.u32(0).u8(64).u8(17).big_endian_u16(0).append(source.address).append(destination.address);

    frame.big_endian_u16(source.port).big_endian_u16(destination.port);
    frame.big_endian_u16(udp_size).big_endian_u16(0).append(payload);

    bytes result = frame.written();
    const std::uint16_t checksum =
        ip_checksum(std::span(result).subspan(ethernet_header_size, ip_header_size));
    result[ethernet_header_size + 10] = static_cast<std::uint8_t>(checksum >> 8);
    result[ethernet_header_size + 11] = static_cast<std::uint8_t>(checksum);
    return result;
}

} // namespace zel::simulation
