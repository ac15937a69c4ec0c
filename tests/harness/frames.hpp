// Frames as the units of an installation send them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "simulation/ethernet_frame.hpp"
#include "simulation/ncom_packet.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace harness {

using zel::simulation::ip_address;
using zel::simulation::ncom_packet;

inline constexpr ip_address hunter_address{195, 0, 0, 10};
inline constexpr ip_address target_address{195, 0, 0, 21};
inline constexpr ip_address broadcast{195, 0, 0, 255};

/// A datagram to this port of the network.
inline bytes datagram(const bytes& payload, std::uint16_t port,
                      const ip_address& source = hunter_address) {
    return zel::simulation::udp_frame({source, 51000}, {broadcast, port}, payload);
}

inline bytes ncom_frame(const bytes& ncom, const ip_address& source = hunter_address) {
    return datagram(ncom, 3000, source);
}

inline bytes ncom_frame(const ncom_packet& packet, const ip_address& source = hunter_address) {
    return ncom_frame(zel::simulation::encode(packet), source);
}

inline bytes rcom_frame(const bytes& rcom, const ip_address& source = hunter_address) {
    return datagram(rcom, 3003, source);
}

/// An NCOM packet whose only content is a status channel.
inline ncom_packet status_packet(std::uint8_t channel, const std::array<std::uint8_t, 8>& data) {
    ncom_packet packet;
    packet.status_channel = channel;
    packet.status_data = data;
    return packet;
}

/// The first `size` bytes.
inline bytes cut(bytes frame, std::size_t size) {
    frame.resize(std::min(size, frame.size()));
    return frame;
}

} // namespace harness
