// Ethernet frames that carry one UDP datagram.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "simulation/wire_writer.hpp"

namespace zel::simulation {

using ip_address = std::array<std::uint8_t, 4>;

/// One end of a datagram; the port in host byte order.
struct endpoint {
    ip_address address;
    std::uint16_t port;
};

/// An Ethernet II frame with an IPv4 header of 20 bytes, a UDP header and the payload. Lengths and
/// the IPv4 checksum are right; the MAC addresses are made from the IP addresses.
bytes udp_frame(const endpoint& source, const endpoint& destination,
                std::span<const std::uint8_t> payload);

} // namespace zel::simulation
