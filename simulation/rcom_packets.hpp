// Encoders of RCOM packets.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "simulation/ethernet_frame.hpp"
#include "simulation/wire_writer.hpp"

namespace zel::simulation {

/// Packet type 2, fields in wire order and wire units. A field without a known meaning is named
/// after its offset in the packet.
struct extended_range_packet {
    std::uint16_t packet_length = 65;
    std::uint16_t word_4 = 0;
    std::uint8_t target_number = 0;
    std::uint8_t byte_7 = 0;
    std::int32_t range_lateral = 0;           ///< mm, to the right
    std::int32_t range_longitudinal = 0;      ///< mm
    std::int16_t range_rate_lateral = 0;      ///< cm/s, to the right
    std::int16_t range_rate_longitudinal = 0; ///< cm/s
    std::int32_t hunter_value_a = 0;
    std::int32_t hunter_value_b = 0;
    std::int32_t target_value_a = 0;
    std::int32_t target_value_b = 0;
    std::uint16_t hunter_value_c = 0;
    std::uint16_t target_value_c = 0;
    std::uint8_t byte_40 = 0;
    std::uint8_t status_channel = 0;
    std::array<std::uint8_t, 8> status_data{};
    std::int16_t velocity_longitudinal = 0;     ///< cm/s
    std::int16_t velocity_lateral = 0;          ///< cm/s, to the right
    std::int16_t acceleration_lateral = 0;      ///< cm/s², to the right
    std::int16_t acceleration_longitudinal = 0; ///< cm/s²
    std::uint8_t byte_58 = 0;
    std::uint8_t byte_59 = 0;
    std::uint8_t byte_60 = 0;
    std::uint8_t byte_61 = 0;
    std::uint16_t word_62 = 0;
    std::uint8_t byte_64 = 0;
};

/// The 65 bytes of the packet.
bytes encode(const extended_range_packet& packet);

/// Packet type 1, fields in wire order and wire units.
struct lane_packet {
    std::uint16_t packet_length = 133;
    std::uint16_t word_4 = 0;
    std::uint8_t byte_6 = 0;
    std::uint8_t byte_7 = 0;
    std::int32_t value_8 = 0;
    std::array<std::int16_t, 16> values_12{}; ///< offsets 12 to 42
    std::array<std::uint8_t, 5> bytes_44{};   ///< offsets 44 to 48
    std::uint8_t status_channel = 0;
    std::array<std::uint8_t, 8> status_data{};
    std::array<std::int16_t, 37> values_58{}; ///< offsets 58 to 130
    std::uint8_t byte_132 = 0;
};

/// The 133 bytes of the packet.
bytes encode(const lane_packet& packet);

/// Packet type 3: a relayed NCOM packet of the unit at `unit_address`. `meta` holds the twelve
/// bytes after the address.
bytes encode_wrapped_ncom(const ip_address& unit_address, std::span<const std::uint8_t> ncom,
                          const std::array<std::uint8_t, 12>& meta = {});

} // namespace zel::simulation
