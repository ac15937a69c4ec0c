// Decoded state of one unit: the hunter or a target.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zel_rt_range_formatter/src/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// NCOM unit record, 869 bytes. It leaves in every NCOM package byte for byte, so its layout is
/// part of the output format. The fields are described one by one in fields/ncom_fields.cpp.
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

    // Velocities (m/s), each with its km/h companion. The third vehicle-frame slot is never filled.
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

static_assert(offsetof(ncom_unit_record, accel_x) == 24);
static_assert(offsetof(ncom_unit_record, accel_y) == 32);
static_assert(offsetof(ncom_unit_record, accel_z) == 40);
static_assert(offsetof(ncom_unit_record, level_accel_x) == 48);
static_assert(offsetof(ncom_unit_record, level_accel_y) == 56);
static_assert(offsetof(ncom_unit_record, level_accel_z) == 64);
static_assert(offsetof(ncom_unit_record, rate_x) == 72);
static_assert(offsetof(ncom_unit_record, rate_y) == 80);
static_assert(offsetof(ncom_unit_record, rate_z) == 88);
static_assert(offsetof(ncom_unit_record, rate_x_copy) == 96);
static_assert(offsetof(ncom_unit_record, rate_y_copy) == 104);
static_assert(offsetof(ncom_unit_record, rate_z_copy) == 112);
static_assert(offsetof(ncom_unit_record, latitude) == 120);
static_assert(offsetof(ncom_unit_record, longitude) == 128);
static_assert(offsetof(ncom_unit_record, altitude) == 136);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_x) == 144);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_x_kmh) == 152);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_y) == 160);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_y_kmh) == 168);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_unused) == 176);
static_assert(offsetof(ncom_unit_record, vehicle_velocity_unused_kmh) == 184);
static_assert(offsetof(ncom_unit_record, velocity_north) == 192);
static_assert(offsetof(ncom_unit_record, velocity_north_kmh) == 200);
static_assert(offsetof(ncom_unit_record, velocity_east) == 208);
static_assert(offsetof(ncom_unit_record, velocity_east_kmh) == 216);
static_assert(offsetof(ncom_unit_record, velocity_down) == 224);
static_assert(offsetof(ncom_unit_record, velocity_down_kmh) == 232);
static_assert(offsetof(ncom_unit_record, heading) == 240);
static_assert(offsetof(ncom_unit_record, pitch) == 248);
static_assert(offsetof(ncom_unit_record, roll) == 256);
static_assert(offsetof(ncom_unit_record, curvature) == 264);
static_assert(offsetof(ncom_unit_record, unit_value_a) == 272);
static_assert(offsetof(ncom_unit_record, unit_value_b) == 280);
static_assert(offsetof(ncom_unit_record, unit_value_c) == 288);
static_assert(offsetof(ncom_unit_record, unit_value_ab) == 296);
static_assert(offsetof(ncom_unit_record, unit_value_c_negated) == 304);
static_assert(offsetof(ncom_unit_record, relative_range_longitudinal) == 312);
static_assert(offsetof(ncom_unit_record, relative_range_lateral) == 320);
static_assert(offsetof(ncom_unit_record, relative_range_rate_longitudinal) == 328);
static_assert(offsetof(ncom_unit_record, relative_range_rate_longitudinal_kmh) == 336);
static_assert(offsetof(ncom_unit_record, relative_range_rate_lateral) == 344);
static_assert(offsetof(ncom_unit_record, relative_range_rate_lateral_kmh) == 352);
static_assert(offsetof(ncom_unit_record, relative_accel_x) == 360);
static_assert(offsetof(ncom_unit_record, relative_accel_y) == 368);
static_assert(offsetof(ncom_unit_record, relative_accel_z) == 376);
static_assert(offsetof(ncom_unit_record, relative_heading) == 384);
static_assert(offsetof(ncom_unit_record, relative_pitch) == 392);
static_assert(offsetof(ncom_unit_record, relative_roll) == 400);
static_assert(offsetof(ncom_unit_record, relative_rate_x) == 408);
static_assert(offsetof(ncom_unit_record, relative_rate_y) == 416);
static_assert(offsetof(ncom_unit_record, relative_rate_z) == 424);
static_assert(offsetof(ncom_unit_record, gps_minutes) == 432);
static_assert(offsetof(ncom_unit_record, time_in_minute_ms) == 436);
static_assert(offsetof(ncom_unit_record, utc_offset) == 440);
static_assert(offsetof(ncom_unit_record, utc_offset_valid) == 441);
static_assert(offsetof(ncom_unit_record, gps_time_valid) == 442);
static_assert(offsetof(ncom_unit_record, utc_time_us) == 443);
static_assert(offsetof(ncom_unit_record, position_accuracy_north) == 451);
static_assert(offsetof(ncom_unit_record, position_accuracy_east) == 459);
static_assert(offsetof(ncom_unit_record, position_accuracy_down) == 467);
static_assert(offsetof(ncom_unit_record, position_accuracy_horizontal) == 475);
static_assert(offsetof(ncom_unit_record, position_accuracy_age) == 483);
static_assert(offsetof(ncom_unit_record, channel_3_byte_7) == 484);
static_assert(offsetof(ncom_unit_record, velocity_accuracy_north) == 485);
static_assert(offsetof(ncom_unit_record, velocity_accuracy_east) == 493);
static_assert(offsetof(ncom_unit_record, velocity_accuracy_down) == 501);
static_assert(offsetof(ncom_unit_record, velocity_accuracy_age) == 509);
static_assert(offsetof(ncom_unit_record, velocity_accuracy_horizontal) == 510);
static_assert(offsetof(ncom_unit_record, channel_4_byte_7) == 518);
static_assert(offsetof(ncom_unit_record, heading_accuracy) == 519);
static_assert(offsetof(ncom_unit_record, pitch_accuracy) == 527);
static_assert(offsetof(ncom_unit_record, roll_accuracy) == 535);
static_assert(offsetof(ncom_unit_record, orientation_accuracy_age) == 543);
static_assert(offsetof(ncom_unit_record, rcom_channel_17_a) == 544);
static_assert(offsetof(ncom_unit_record, rcom_channel_17_b) == 552);
static_assert(offsetof(ncom_unit_record, rcom_channel_17_c) == 560);
static_assert(offsetof(ncom_unit_record, range_lateral) == 564);
static_assert(offsetof(ncom_unit_record, range_longitudinal) == 572);
static_assert(offsetof(ncom_unit_record, range_rate_lateral) == 580);
static_assert(offsetof(ncom_unit_record, range_rate_longitudinal) == 588);
static_assert(offsetof(ncom_unit_record, ttc_longitudinal) == 596);
static_assert(offsetof(ncom_unit_record, ttc_longitudinal_accelerated) == 604);
static_assert(offsetof(ncom_unit_record, ttc_lateral) == 612);
static_assert(offsetof(ncom_unit_record, ttc_lateral_accelerated) == 620);
static_assert(offsetof(ncom_unit_record, primary_antenna_x) == 628);
static_assert(offsetof(ncom_unit_record, primary_antenna_y) == 636);
static_assert(offsetof(ncom_unit_record, primary_antenna_z) == 644);
static_assert(offsetof(ncom_unit_record, primary_antenna_age) == 652);
static_assert(offsetof(ncom_unit_record, primary_antenna_accuracy_x) == 653);
static_assert(offsetof(ncom_unit_record, primary_antenna_accuracy_y) == 661);
static_assert(offsetof(ncom_unit_record, primary_antenna_accuracy_z) == 669);
static_assert(offsetof(ncom_unit_record, primary_antenna_accuracy_age) == 677);
static_assert(offsetof(ncom_unit_record, dual_antenna_heading) == 678);
static_assert(offsetof(ncom_unit_record, dual_antenna_pitch) == 686);
static_assert(offsetof(ncom_unit_record, dual_antenna_distance) == 694);
static_assert(offsetof(ncom_unit_record, dual_antenna_age) == 702);
static_assert(offsetof(ncom_unit_record, dual_antenna_heading_accuracy) == 703);
static_assert(offsetof(ncom_unit_record, dual_antenna_pitch_accuracy) == 711);
static_assert(offsetof(ncom_unit_record, dual_antenna_distance_accuracy) == 719);
static_assert(offsetof(ncom_unit_record, dual_antenna_accuracy_age) == 727);
static_assert(offsetof(ncom_unit_record, output_displacement_x) == 728);
static_assert(offsetof(ncom_unit_record, output_displacement_y) == 736);
static_assert(offsetof(ncom_unit_record, output_displacement_z) == 744);
static_assert(offsetof(ncom_unit_record, output_displacement_age) == 752);
static_assert(offsetof(ncom_unit_record, channel_75_word_0) == 753);
static_assert(offsetof(ncom_unit_record, channel_75_byte_2) == 755);
static_assert(offsetof(ncom_unit_record, channel_76_word_0) == 756);
static_assert(offsetof(ncom_unit_record, channel_76_word_2) == 758);
static_assert(offsetof(ncom_unit_record, channel_76_word_4) == 760);
static_assert(offsetof(ncom_unit_record, channel_77_byte_0) == 762);
static_assert(offsetof(ncom_unit_record, channel_77_byte_1) == 763);
static_assert(offsetof(ncom_unit_record, channel_77_byte_2) == 764);
static_assert(offsetof(ncom_unit_record, satellites) == 765);
static_assert(offsetof(ncom_unit_record, orientation_mode) == 766);
static_assert(offsetof(ncom_unit_record, velocity_mode) == 767);
static_assert(offsetof(ncom_unit_record, reserved_768) == 768);
static_assert(offsetof(ncom_unit_record, primary_receiver_characters) == 769);
static_assert(offsetof(ncom_unit_record, primary_receiver_packets) == 771);
static_assert(offsetof(ncom_unit_record, primary_receiver_characters_skipped) == 773);
static_assert(offsetof(ncom_unit_record, primary_receiver_packets_skipped) == 775);
static_assert(offsetof(ncom_unit_record, rcom_channel_value) == 777);
static_assert(offsetof(ncom_unit_record, sync) == 785);
static_assert(offsetof(ncom_unit_record, navigation_status) == 789);
static_assert(offsetof(ncom_unit_record, ncom_status_channel) == 793);
static_assert(offsetof(ncom_unit_record, checksum_1) == 797);
static_assert(offsetof(ncom_unit_record, checksum_2) == 801);
static_assert(offsetof(ncom_unit_record, checksum_3) == 805);
static_assert(offsetof(ncom_unit_record, differential_age) == 809);
static_assert(offsetof(ncom_unit_record, sample_accel_x) == 813);
static_assert(offsetof(ncom_unit_record, sample_accel_y) == 821);
static_assert(offsetof(ncom_unit_record, sample_vehicle_velocity_x) == 829);
static_assert(offsetof(ncom_unit_record, sample_vehicle_velocity_x_kmh) == 837);
static_assert(offsetof(ncom_unit_record, sample_vehicle_velocity_y) == 845);
static_assert(offsetof(ncom_unit_record, sample_vehicle_velocity_y_kmh) == 853);
static_assert(offsetof(ncom_unit_record, sample_rate_z) == 861);
static_assert(sizeof(ncom_unit_record) == 869);

} // namespace zel::toolbox::rt_range
