// The UDP datagram in an Ethernet frame.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

inline constexpr std::uint16_t ncom_port = 3000;
inline constexpr std::uint16_t rcom_port = 3003;

/// Sizes of the headers in bytes. IPv4 headers with options are not supported.
inline constexpr std::uint64_t ethernet_header_size = 14;
inline constexpr std::uint64_t ip_header_size = 20;
inline constexpr std::uint64_t udp_header_size = 8;

/// Addresses are in wire byte order, ports in host byte order. The payload is everything from the
/// end of the UDP header to the end of the frame; it points into the raw package.
struct udp_datagram {
    std::uint32_t source_ip;
    std::uint32_t destination_ip;
    std::uint16_t source_port;
    std::uint16_t destination_port;
    const std::uint8_t* payload;
    std::uint64_t payload_size;
};

/// The datagram of a frame that contains all three headers.
udp_datagram read_datagram(const std::uint8_t* frame, std::uint64_t frame_size);

/// Counts a datagram in the header of the record that it belongs to, and stores its addresses and
/// ports there.
void count_datagram(endpoint_header& endpoint, const udp_datagram& datagram);

} // namespace zel::toolbox::rt_range
