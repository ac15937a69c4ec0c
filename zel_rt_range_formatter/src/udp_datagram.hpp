// A UDP datagram as the decoder takes it from an Ethernet frame.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

inline constexpr std::uint16_t ncom_port = 3000;
inline constexpr std::uint16_t rcom_port = 3003;

/// Sizes in bytes of the headers; an IPv4 header with options is not supported.
inline constexpr std::uint64_t ethernet_header_size = 14;
inline constexpr std::uint64_t ip_header_size = 20;
inline constexpr std::uint64_t udp_header_size = 8;

/// Addresses as they stand on the wire, ports in host byte order. The payload is everything after
/// the UDP header up to the end of the frame, and belongs to the raw package.
struct udp_datagram {
    std::uint32_t source_ip;
    std::uint32_t destination_ip;
    std::uint16_t source_port;
    std::uint16_t destination_port;
    const std::uint8_t* payload;
    std::uint64_t payload_size;
};

/// UDP destination port of a frame that is known to hold all three headers, in host byte order.
std::uint16_t destination_port_of(const std::uint8_t* frame);

/// Reads the datagram of a frame that is known to hold all three headers.
udp_datagram read_datagram(const std::uint8_t* frame, std::uint64_t frame_size);

/// Counts a datagram in the header of the record that it belongs to, and stores its addresses and
/// ports there.
void count_datagram(endpoint_header& endpoint, const udp_datagram& datagram);

} // namespace zel::toolbox::rt_range
