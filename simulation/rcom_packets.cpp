#include "simulation/rcom_packets.hpp"

#include <cstddef>

namespace zel::simulation {
namespace {

constexpr std::uint8_t sync_byte = 'W';
constexpr std::uint8_t lane_type = 1;
constexpr std::uint8_t extended_range_type = 2;
constexpr std::uint8_t wrapped_ncom_type = 3;

} // namespace

bytes encode(const extended_range_packet& packet) {
    wire_writer writer;
    writer.u8(sync_byte).u8(extended_range_type).u16(packet.packet_length);
    writer.u16(packet.word_4).u8(packet.target_number).u8(packet.byte_7);
    writer.s32(packet.range_lateral).s32(packet.range_longitudinal);
    writer.s16(packet.range_rate_lateral).s16(packet.range_rate_longitudinal);
    writer.s32(packet.hunter_value_a).s32(packet.hunter_value_b);
    writer.s32(packet.target_value_a).s32(packet.target_value_b);
    writer.u16(packet.hunter_value_c).u16(packet.target_value_c);
    writer.u8(packet.byte_40).u8(packet.status_channel).append(packet.status_data);
    writer.s16(packet.velocity_longitudinal).s16(packet.velocity_lateral);
    writer.s16(packet.acceleration_lateral).s16(packet.acceleration_longitudinal);
    writer.u8(packet.byte_58).u8(packet.byte_59).u8(packet.byte_60).u8(packet.byte_61);
    writer.u16(packet.word_62).u8(packet.byte_64);
    return writer.written();
}

bytes encode(const lane_packet& packet) {
    wire_writer writer;
    writer.u8(sync_byte).u8(lane_type).u16(packet.packet_length);
    writer.u16(packet.word_4).u8(packet.byte_6).u8(packet.byte_7).s32(packet.value_8);
    for (const std::int16_t value : packet.values_12)
        writer.s16(value);
    writer.append(packet.bytes_44).u8(packet.status_channel).append(packet.status_data);
    for (const std::int16_t value : packet.values_58)
        writer.s16(value);
    writer.u8(packet.byte_132);
    return writer.written();
}

bytes encode_wrapped_ncom(const ip_address& unit_address, std::span<const std::uint8_t> ncom,
                          const std::array<std::uint8_t, 12>& meta) {
    constexpr std::size_t headers = 20;
    wire_writer writer;
    writer.u8(sync_byte).u8(wrapped_ncom_type);
    writer.u16(static_cast<std::uint16_t>(headers + ncom.size()));
    writer.append(unit_address).append(meta).append(ncom);
    return writer.written();
}

} // namespace zel::simulation
