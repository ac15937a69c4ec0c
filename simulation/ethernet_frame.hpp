// Ethernet frames that carry one UDP datagram.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "simulation/wire_writer.hpp"

namespace zel::simulation {

using ip_address = std::array<std::uint8_t, 4>;

/// The source or destination of a datagram. The port is in host byte order.
struct endpoint {
    ip_address address;
    std::uint16_t port;
};

/// An Ethernet II frame with an IPv4 header of 20 bytes, a UDP header and the payload. Lengths and
/// the IPv4 checksum are correct. The MAC addresses are derived from the IP addresses.
bytes udp_frame(const endpoint& source, const endpoint& destination,
                std::span<const std::uint8_t> payload);

} // namespace zel::simulation
