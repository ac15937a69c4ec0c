// Decoded state of one unit: the hunter or a target.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// NCOM unit record, 869 bytes. Every NCOM package contains it byte for byte, so its layout is part
/// of the output format. ncom_fields.cpp describes the fields.
struct ncom_unit_record {
    endpoint_header endpoint;

    // Accelerations (m/s²) in the vehicle frame and in the level frame.
    double accel_x;
    double accel_y;
    double accel_z;
    double level_accel_x;
    double level_accel_y;
    double level_accel_z;

    // Angular rates (deg/s), and copies that keep the signs of the wire.
    double rate_x;
    double rate_y;
    double rate_z;
    double rate_x_copy;
    double rate_y_copy;
    double rate_z_copy;

    // Position (deg, deg, m).
    double latitude;
    double longitude;
    double altitude;

    // Velocities (m/s), each with its value in km/h. The third vehicle-frame slot is never filled.
    double vehicle_velocity_x;
    double vehicle_velocity_x_kmh;
    double vehicle_velocity_y;
    double vehicle_velocity_y_kmh;
    double vehicle_velocity_unused;
    double vehicle_velocity_unused_kmh;
    double velocity_north;
    double velocity_north_kmh;
    double velocity_east;
    double velocity_east_kmh;
    double velocity_down;
    double velocity_down_kmh;

    // Orientation (deg) and curvature (1/m).
    double heading;
    double pitch;
    double roll;
    double curvature;

    // Values of the extended range packet for this unit; 'ab' is the root of the sum of squares.
    double unit_value_a;
    double unit_value_b;
    double unit_value_c;
    double unit_value_ab;
    double unit_value_c_negated;

    // Relative to the hunter: ranges and range rates.
    double relative_range_longitudinal;
    double relative_range_lateral;
    double relative_range_rate_longitudinal;
    double relative_range_rate_longitudinal_kmh;
    double relative_range_rate_lateral;
    double relative_range_rate_lateral_kmh;

    // Relative to the hunter: unit minus hunter, for angles hunter minus unit.
    double relative_accel_x;
    double relative_accel_y;
    double relative_accel_z;
    double relative_heading;
    double relative_pitch;
    double relative_roll;
    double relative_rate_x;
    double relative_rate_y;
    double relative_rate_z;

    // Time.
    std::int32_t gps_minutes;
    std::uint32_t time_in_minute_ms;
    std::uint8_t utc_offset;
    std::uint8_t utc_offset_valid;
    std::uint8_t gps_time_valid;
    std::uint64_t utc_time_us;

    // Status channels 3, 4 and 5: accuracies (m, m/s, deg).
    double position_accuracy_north;
    double position_accuracy_east;
    double position_accuracy_down;
    double position_accuracy_horizontal;
    std::uint8_t position_accuracy_age;
    std::uint8_t channel_3_byte_7;
    double velocity_accuracy_north;
    double velocity_accuracy_east;
    double velocity_accuracy_down;
    std::uint8_t velocity_accuracy_age;
    double velocity_accuracy_horizontal;
    std::uint8_t channel_4_byte_7;
    double heading_accuracy;
    double pitch_accuracy;
    double roll_accuracy;
    std::uint8_t orientation_accuracy_age;

    // From RCOM: status channel 17, ranges (m), range rates (m/s), times to collision (s).
    double rcom_channel_17_a;
    double rcom_channel_17_b;
    std::uint32_t rcom_channel_17_c;
    double range_lateral;
    double range_longitudinal;
    double range_rate_lateral;
    double range_rate_longitudinal;
    double ttc_longitudinal;
    double ttc_longitudinal_accelerated;
    double ttc_lateral;
    double ttc_lateral_accelerated;

    // Status channels 12 to 15: antennas (m, deg).
    double primary_antenna_x;
    double primary_antenna_y;
    double primary_antenna_z;
    std::uint8_t primary_antenna_age;
    double primary_antenna_accuracy_x;
    double primary_antenna_accuracy_y;
    double primary_antenna_accuracy_z;
    std::uint8_t primary_antenna_accuracy_age;
    double dual_antenna_heading;
    double dual_antenna_pitch;
    double dual_antenna_distance;
    std::uint8_t dual_antenna_age;
    double dual_antenna_heading_accuracy;
    double dual_antenna_pitch_accuracy;
    double dual_antenna_distance_accuracy;
    std::uint8_t dual_antenna_accuracy_age;

    // Status channel 26: lever arm (m).
    double output_displacement_x;
    double output_displacement_y;
    double output_displacement_z;
    std::uint8_t output_displacement_age;

    // Status channels 75, 76, 77, 0 and 2.
    std::uint16_t channel_75_word_0;
    std::uint8_t channel_75_byte_2;
    std::uint16_t channel_76_word_0;
    std::uint16_t channel_76_word_2;
    std::uint16_t channel_76_word_4;
    std::uint8_t channel_77_byte_0;
    std::uint8_t channel_77_byte_1;
    std::uint8_t channel_77_byte_2;
    std::uint8_t satellites;
    std::uint8_t orientation_mode;
    std::uint8_t velocity_mode;
    std::uint8_t reserved_768;
    std::uint16_t primary_receiver_characters;
    std::uint16_t primary_receiver_packets;
    std::uint16_t primary_receiver_characters_skipped;
    std::uint16_t primary_receiver_packets_skipped;

    // From RCOM: status channel 0 (targets) or 5 (hunter).
    double rcom_channel_value;

    // The packet itself.
    std::uint32_t sync;
    std::uint32_t navigation_status;
    std::uint32_t ncom_status_channel;
    std::uint32_t checksum_1;
    std::uint32_t checksum_2;
    std::uint32_t checksum_3;

    // Status channel 20.
    std::uint32_t differential_age;

    // Sample slots of the batch packages.
    double sample_accel_x;
    double sample_accel_y;
    double sample_vehicle_velocity_x;
    double sample_vehicle_velocity_x_kmh;
    double sample_vehicle_velocity_y;
    double sample_vehicle_velocity_y_kmh;
    double sample_rate_z;
};

#pragma pack(pop)

} // namespace zel::toolbox::rt_range
