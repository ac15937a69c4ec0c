// Decoded state of the RT-Range unit that sends RCOM.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// RCOM unit record, 1187 bytes. Every RCOM package contains it byte for byte, so its layout is
/// part of the output format. rcom_fields.cpp describes the fields.
struct rcom_unit_record {
    endpoint_header endpoint;

    // Extended range packet and its status channels.
    std::uint32_t ext_range_word_4;
    std::int32_t channel_0_value;
    std::int16_t channel_7_word_0;
    std::uint8_t channel_0_byte_4;
    std::uint8_t channel_0_byte_5;
    double channel_0_scaled;
    std::uint8_t channel_6_byte_0;
    std::uint8_t channel_6_byte_1;
    std::uint8_t channel_6_byte_2;
    std::uint32_t channel_6_value;
    std::uint8_t channel_1[8];
    std::uint16_t channel_2_word_0;
    std::uint16_t channel_2_word_2;
    std::uint16_t channel_2_word_4;
    std::uint16_t channel_3_word_0;
    std::uint16_t channel_3_word_2;
    std::uint16_t channel_3_word_4;
    std::uint16_t channel_4_word_0;
    std::uint16_t channel_4_word_2;
    std::uint16_t channel_4_word_4;
    double channel_5_scaled;
    std::uint64_t reserved_89;
    std::uint64_t reserved_97;
    std::uint8_t channel_7_byte_3;
    std::uint16_t channel_7_word_4;
    std::uint8_t channel_7_byte_6;
    double channel_20_a;
    double channel_20_b;
    double channel_21_a;
    double channel_21_b;
    double target_latitude;
    double target_longitude;
    double target_altitude;
    double target_heading;
    double channel_13_a;
    double channel_13_b;
    double channel_13_c;
    double channel_14_a;
    double channel_14_b;
    double channel_14_c;
    std::uint16_t channel_15_word_0;
    std::uint16_t channel_15_word_2;
    std::uint16_t channel_15_word_4;
    std::uint16_t channel_15_word_6;
    double channel_16_a;
    double channel_16_b;
    double channel_16_c;
    double channel_16_d;
    double channel_17_a;
    double channel_17_b;
    std::uint32_t channel_17_c;
    double channel_18_a;
    double channel_18_b;
    double channel_19_a;
    double channel_19_b;
    std::uint64_t reserved_313;
    std::uint32_t reserved_321;

    // Head of the last packet of type 1 or 2, and the extended range packet.
    std::uint8_t sync;
    std::uint8_t packet_type;
    std::uint32_t packet_length;
    std::uint8_t status_channel;
    std::uint8_t ext_range_byte_64;
    std::uint8_t target_number;
    std::uint8_t ext_range_byte_7;
    std::uint8_t ext_range_byte_60;
    std::uint8_t ext_range_byte_61;
    std::uint16_t ext_range_word_62;
    double range_lateral;
    double range_longitudinal;
    double range_rate_lateral;
    double range_rate_longitudinal;
    double hunter_value_a;
    double hunter_value_b;
    double target_value_a;
    double target_value_b;
    double hunter_value_c;
    double target_value_c;
    std::uint8_t ext_range_byte_40;

    // Status channels 11, 12 and 9.
    double channel_11_a;
    double channel_11_b;
    double channel_12_a;
    double channel_12_b;
    std::uint32_t hunter_address; ///< wire byte order
    std::uint32_t target_address; ///< wire byte order

    // Motion (m/s, m/s²) and its multiples by 3.6; velocity_lateral_kmh holds the longitudinal
    // velocity, too.
    double velocity_longitudinal;
    double velocity_longitudinal_kmh;
    double velocity_lateral;
    double velocity_lateral_kmh;
    double acceleration_lateral;
    double acceleration_lateral_scaled;
    double acceleration_longitudinal;
    double acceleration_longitudinal_scaled;
    std::uint8_t ext_range_byte_58;
    std::uint8_t ext_range_byte_59;

    // Lane packet.
    std::uint32_t lane_word_4;
    std::uint8_t lane_status_channel;
    std::uint8_t lane_byte_48;
    std::uint8_t lane_byte_132;
    std::uint8_t lane_byte_6;
    std::uint8_t lane_byte_7;
    std::uint8_t lane_byte_44;
    std::uint8_t lane_byte_45;
    std::uint8_t lane_byte_46;
    std::uint8_t lane_byte_47;
    double lane_values[66]; ///< D0 to D65

    // Lane status channels.
    std::int32_t lane_channel_0_a;
    std::int32_t lane_channel_0_b;
    std::uint8_t lane_channel_1[8];
    std::uint8_t lane_channel_2_byte_0;
    std::uint64_t lane_channel_2_value;
    std::uint8_t lane_channel_6_byte_0;
    std::uint8_t lane_channel_6_byte_1;
    std::uint8_t lane_channel_6_byte_2;
    std::uint32_t lane_channel_6_value;
    std::int16_t lane_channel_6_word_6;
    std::int16_t lane_channel_7_word_0;
    std::int64_t lane_channel_7_value;
    double lane_channel_8_a;
    double lane_channel_8_b;
    double lane_channel_8_c;
    double lane_channel_9_a;
    double lane_channel_9_b;
    double lane_channel_9_c;
    double lane_channel_10_a;
    double lane_channel_10_b;
    double lane_channel_10_c;
    std::uint16_t lane_channel_15_word_0;
    std::uint16_t lane_channel_15_word_2;
    std::uint16_t lane_channel_15_word_4;
    std::uint16_t lane_channel_15_word_6;
};

#pragma pack(pop)

} // namespace zel::toolbox::rt_range
