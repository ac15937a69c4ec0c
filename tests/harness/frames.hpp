// Frames as the units of an installation send them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "simulation/ethernet_frame.hpp"
#include "simulation/ncom_packet.hpp"
#include "simulation/rcom_packets.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace harness {

using zel::simulation::encode_wrapped_ncom;
using zel::simulation::extended_range_packet;
using zel::simulation::ip_address;
using zel::simulation::lane_packet;
using zel::simulation::ncom_packet;
using zel::simulation::wire_writer;
using channel_data = std::array<std::uint8_t, 8>;

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
inline ncom_packet status_packet(std::uint8_t channel, const channel_data& data) {
    ncom_packet packet;
    packet.status_channel = channel;
    packet.status_data = data;
    return packet;
}

inline bytes rcom_frame(const auto& packet) {
    return rcom_frame(encode(packet));
}
inline bytes wrapped_frame(const ip_address& address, const ncom_packet& packet = {}) {
    return rcom_frame(encode_wrapped_ncom(address, encode(packet)));
}

inline extended_range_packet range_packet(std::uint8_t target, std::uint8_t channel = 1,
                                          const channel_data& data = {}) {
    extended_range_packet packet;
    packet.target_number = target;
    packet.status_channel = channel;
    packet.status_data = data;
    return packet;
}

inline channel_data channel_of(const wire_writer& writer) {
    channel_data data{};
    std::copy(writer.written().begin(), writer.written().end(), data.begin());
    return data;
}
inline channel_data two(std::int32_t first, std::int32_t second) {
    return channel_of(wire_writer().s32(first).s32(second));
}
inline channel_data three(std::int32_t first, std::int32_t second, std::int16_t third) {
    return channel_of(wire_writer().s24(first).s24(second).s16(third));
}

/// Names the addresses of the hunter and of a target.
inline bytes identification(std::uint8_t target, const ip_address& hunter_ip,
                            const ip_address& target_ip) {
    const auto data = channel_of(wire_writer().append(hunter_ip).append(target_ip));
    return rcom_frame(range_packet(target, 9, data));
}

/// The first `size` bytes.
inline bytes cut(bytes frame, std::size_t size) {
    frame.resize(std::min(size, frame.size()));
    return frame;
}

} // namespace harness
