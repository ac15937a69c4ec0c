/* The records in packages of format type ZEL_FORMAT_TYPE_RTRANGE. */
/* Written by `rtrange fields --c`. */
#ifndef ZEL_RT_RANGE_RECORDS_H
#define ZEL_RT_RANGE_RECORDS_H

#include "zel/api.h"
#include "zel/format_type.h"

/* clang-format off */

/* First 4 bytes of the data of a package; the record follows them directly. For the hunter and the
 * targets, it is an NCOM record. */
#define ZEL_RT_RANGE_TAG_HUNTER UINT32_C(0x00100000)
#define ZEL_RT_RANGE_TAG_RCOM UINT32_C(0x00200000)
#define ZEL_RT_RANGE_TAG_TARGET_1 UINT32_C(0x00300000)
#define ZEL_RT_RANGE_TAG_TARGET_2 UINT32_C(0x00400000)
#define ZEL_RT_RANGE_TAG_TARGET_3 UINT32_C(0x00500000)
#define ZEL_RT_RANGE_TAG_TARGET_4 UINT32_C(0x00600000)

/* docs/records.md describes the fields. The numbers are little-endian. The records are packed, so
 * their members may be misaligned: access them by name, do not take their addresses. Copy a record
 * out of its package with memcpy. */
#pragma pack(push, 1)

typedef struct zel_rt_range_ncom_record_t {
    uint8_t source_ip[4]; /* in the order of the wire */
    uint32_t source_port;
    uint8_t destination_ip[4]; /* in the order of the wire */
    uint32_t destination_port;
    uint64_t packet_count;
    double accel_x; /* m/s^2 */
    double accel_y; /* m/s^2 */
    double accel_z; /* m/s^2 */
    double level_accel_x; /* m/s^2 */
    double level_accel_y; /* m/s^2 */
    double level_accel_z; /* m/s^2 */
    double rate_x; /* deg/s */
    double rate_y; /* deg/s */
    double rate_z; /* deg/s */
    double rate_x_copy; /* deg/s */
    double rate_y_copy; /* deg/s */
    double rate_z_copy; /* deg/s */
    double latitude; /* deg */
    double longitude; /* deg */
    double altitude; /* m */
    double vehicle_velocity_x; /* m/s */
    double vehicle_velocity_x_kmh; /* km/h */
    double vehicle_velocity_y; /* m/s */
    double vehicle_velocity_y_kmh; /* km/h */
    double vehicle_velocity_unused; /* m/s */
    double vehicle_velocity_unused_kmh; /* km/h */
    double velocity_north; /* m/s */
    double velocity_north_kmh; /* km/h */
    double velocity_east; /* m/s */
    double velocity_east_kmh; /* km/h */
    double velocity_down; /* m/s */
    double velocity_down_kmh; /* km/h */
    double heading; /* deg */
    double pitch; /* deg */
    double roll; /* deg */
    double curvature; /* 1/m */
    double unit_value_a;
    double unit_value_b;
    double unit_value_c;
    double unit_value_ab;
    double unit_value_c_negated;
    double relative_range_longitudinal; /* m */
    double relative_range_lateral; /* m */
    double relative_range_rate_longitudinal; /* m/s */
    double relative_range_rate_longitudinal_kmh; /* km/h */
    double relative_range_rate_lateral; /* m/s */
    double relative_range_rate_lateral_kmh; /* km/h */
    double relative_accel_x; /* m/s^2 */
    double relative_accel_y; /* m/s^2 */
    double relative_accel_z; /* m/s^2 */
    double relative_heading; /* deg */
    double relative_pitch; /* deg */
    double relative_roll; /* deg */
    double relative_rate_x; /* deg/s */
    double relative_rate_y; /* deg/s */
    double relative_rate_z; /* deg/s */
    int32_t gps_minutes; /* min */
    uint32_t time_in_minute_ms; /* ms */
    uint8_t utc_offset; /* s */
    uint8_t utc_offset_valid;
    uint8_t gps_time_valid;
    uint64_t utc_time_us; /* us */
    double position_accuracy_north; /* m */
    double position_accuracy_east; /* m */
    double position_accuracy_down; /* m */
    double position_accuracy_horizontal; /* m */
    uint8_t position_accuracy_age;
    uint8_t channel_3_byte_7;
    double velocity_accuracy_north; /* m/s */
    double velocity_accuracy_east; /* m/s */
    double velocity_accuracy_down; /* m/s */
    uint8_t velocity_accuracy_age;
    double velocity_accuracy_horizontal; /* m/s */
    uint8_t channel_4_byte_7;
    double heading_accuracy; /* deg */
    double pitch_accuracy; /* deg */
    double roll_accuracy; /* deg */
    uint8_t orientation_accuracy_age;
    double rcom_channel_17_a;
    double rcom_channel_17_b;
    uint32_t rcom_channel_17_c;
    double range_lateral; /* m */
    double range_longitudinal; /* m */
    double range_rate_lateral; /* m/s */
    double range_rate_longitudinal; /* m/s */
    double ttc_longitudinal; /* s */
    double ttc_longitudinal_accelerated; /* s */
    double ttc_lateral; /* s */
    double ttc_lateral_accelerated; /* s */
    double primary_antenna_x; /* m */
    double primary_antenna_y; /* m */
    double primary_antenna_z; /* m */
    uint8_t primary_antenna_age;
    double primary_antenna_accuracy_x; /* m */
    double primary_antenna_accuracy_y; /* m */
    double primary_antenna_accuracy_z; /* m */
    uint8_t primary_antenna_accuracy_age;
    double dual_antenna_heading; /* deg */
    double dual_antenna_pitch; /* deg */
    double dual_antenna_distance; /* m */
    uint8_t dual_antenna_age;
    double dual_antenna_heading_accuracy; /* deg */
    double dual_antenna_pitch_accuracy; /* deg */
    double dual_antenna_distance_accuracy; /* m */
    uint8_t dual_antenna_accuracy_age;
    double output_displacement_x; /* m */
    double output_displacement_y; /* m */
    double output_displacement_z; /* m */
    uint8_t output_displacement_age;
    uint16_t channel_75_word_0;
    uint8_t channel_75_byte_2;
    uint16_t channel_76_word_0;
    uint16_t channel_76_word_2;
    uint16_t channel_76_word_4;
    uint8_t channel_77_byte_0;
    uint8_t channel_77_byte_1;
    uint8_t channel_77_byte_2;
    uint8_t satellites;
    uint8_t orientation_mode;
    uint8_t velocity_mode;
    uint8_t reserved_768;
    uint16_t primary_receiver_characters;
    uint16_t primary_receiver_packets;
    uint16_t primary_receiver_characters_skipped;
    uint16_t primary_receiver_packets_skipped;
    double rcom_channel_value;
    uint32_t sync;
    uint32_t navigation_status;
    uint32_t ncom_status_channel;
    uint32_t checksum_1;
    uint32_t checksum_2;
    uint32_t checksum_3;
    uint32_t differential_age; /* s */
    double sample_accel_x; /* m/s^2 */
    double sample_accel_y; /* m/s^2 */
    double sample_vehicle_velocity_x; /* m/s */
    double sample_vehicle_velocity_x_kmh; /* km/h */
    double sample_vehicle_velocity_y; /* m/s */
    double sample_vehicle_velocity_y_kmh; /* km/h */
    double sample_rate_z; /* deg/s */
} zel_rt_range_ncom_record_t;

typedef struct zel_rt_range_rcom_record_t {
    uint8_t source_ip[4]; /* in the order of the wire */
    uint32_t source_port;
    uint8_t destination_ip[4]; /* in the order of the wire */
    uint32_t destination_port;
    uint64_t packet_count;
    uint32_t ext_range_word_4;
    int32_t channel_0_value;
    int16_t channel_7_word_0;
    uint8_t channel_0_byte_4;
    uint8_t channel_0_byte_5;
    double channel_0_scaled;
    uint8_t channel_6_byte_0;
    uint8_t channel_6_byte_1;
    uint8_t channel_6_byte_2;
    uint32_t channel_6_value;
    uint8_t channel_1_byte_0;
    uint8_t channel_1_byte_1;
    uint8_t channel_1_byte_2;
    uint8_t channel_1_byte_3;
    uint8_t channel_1_byte_4;
    uint8_t channel_1_byte_5;
    uint8_t channel_1_byte_6;
    uint8_t channel_1_byte_7;
    uint16_t channel_2_word_0;
    uint16_t channel_2_word_2;
    uint16_t channel_2_word_4;
    uint16_t channel_3_word_0;
    uint16_t channel_3_word_2;
    uint16_t channel_3_word_4;
    uint16_t channel_4_word_0;
    uint16_t channel_4_word_2;
    uint16_t channel_4_word_4;
    double channel_5_scaled;
    uint64_t reserved_89;
    uint64_t reserved_97;
    uint8_t channel_7_byte_3;
    uint16_t channel_7_word_4;
    uint8_t channel_7_byte_6;
    double channel_20_a;
    double channel_20_b;
    double channel_21_a;
    double channel_21_b;
    double target_latitude; /* deg */
    double target_longitude; /* deg */
    double target_altitude; /* m */
    double target_heading; /* deg */
    double channel_13_a;
    double channel_13_b;
    double channel_13_c;
    double channel_14_a;
    double channel_14_b;
    double channel_14_c;
    uint16_t channel_15_word_0;
    uint16_t channel_15_word_2;
    uint16_t channel_15_word_4;
    uint16_t channel_15_word_6;
    double channel_16_a;
    double channel_16_b;
    double channel_16_c;
    double channel_16_d;
    double channel_17_a;
    double channel_17_b;
    uint32_t channel_17_c;
    double channel_18_a;
    double channel_18_b;
    double channel_19_a;
    double channel_19_b;
    uint64_t reserved_313;
    uint32_t reserved_321;
    uint8_t sync;
    uint8_t packet_type;
    uint32_t packet_length;
    uint8_t status_channel;
    uint8_t ext_range_byte_64;
    uint8_t target_number;
    uint8_t ext_range_byte_7;
    uint8_t ext_range_byte_60;
    uint8_t ext_range_byte_61;
    uint16_t ext_range_word_62;
    double range_lateral; /* m */
    double range_longitudinal; /* m */
    double range_rate_lateral; /* m/s */
    double range_rate_longitudinal; /* m/s */
    double hunter_value_a;
    double hunter_value_b;
    double target_value_a;
    double target_value_b;
    double hunter_value_c;
    double target_value_c;
    uint8_t ext_range_byte_40;
    double channel_11_a;
    double channel_11_b;
    double channel_12_a;
    double channel_12_b;
    uint8_t hunter_address[4]; /* in the order of the wire */
    uint8_t target_address[4]; /* in the order of the wire */
    double velocity_longitudinal; /* m/s */
    double velocity_longitudinal_kmh; /* km/h */
    double velocity_lateral; /* m/s */
    double velocity_lateral_kmh; /* km/h */
    double acceleration_lateral; /* m/s^2 */
    double acceleration_lateral_scaled;
    double acceleration_longitudinal; /* m/s^2 */
    double acceleration_longitudinal_scaled;
    uint8_t ext_range_byte_58;
    uint8_t ext_range_byte_59;
    uint32_t lane_word_4;
    uint8_t lane_status_channel;
    uint8_t lane_byte_48;
    uint8_t lane_byte_132;
    uint8_t lane_byte_6;
    uint8_t lane_byte_7;
    uint8_t lane_byte_44;
    uint8_t lane_byte_45;
    uint8_t lane_byte_46;
    uint8_t lane_byte_47;
    double lane_d0;
    double lane_d1;
    double lane_d2;
    double lane_d3;
    double lane_d4;
    double lane_d5;
    double lane_d6;
    double lane_d7;
    double lane_d8;
    double lane_d9;
    double lane_d10;
    double lane_d11;
    double lane_d12;
    double lane_d13;
    double lane_d14;
    double lane_d15;
    double lane_d16;
    double lane_d17;
    double lane_d18;
    double lane_d19;
    double lane_d20;
    double lane_d21;
    double lane_d22;
    double lane_d23;
    double lane_d24;
    double lane_d25;
    double lane_d26;
    double lane_d27;
    double lane_d28;
    double lane_d29;
    double lane_d30;
    double lane_d31;
    double lane_d32;
    double lane_d33;
    double lane_d34;
    double lane_d35;
    double lane_d36;
    double lane_d37;
    double lane_d38;
    double lane_d39;
    double lane_d40;
    double lane_d41;
    double lane_d42;
    double lane_d43;
    double lane_d44;
    double lane_d45;
    double lane_d46;
    double lane_d47;
    double lane_d48;
    double lane_d49;
    double lane_d50;
    double lane_d51;
    double lane_d52;
    double lane_d53;
    double lane_d54;
    double lane_d55;
    double lane_d56;
    double lane_d57;
    double lane_d58;
    double lane_d59;
    double lane_d60;
    double lane_d61;
    double lane_d62;
    double lane_d63;
    double lane_d64;
    double lane_d65;
    int32_t lane_channel_0_a;
    int32_t lane_channel_0_b;
    uint8_t lane_channel_1_byte_0;
    uint8_t lane_channel_1_byte_1;
    uint8_t lane_channel_1_byte_2;
    uint8_t lane_channel_1_byte_3;
    uint8_t lane_channel_1_byte_4;
    uint8_t lane_channel_1_byte_5;
    uint8_t lane_channel_1_byte_6;
    uint8_t lane_channel_1_byte_7;
    uint8_t lane_channel_2_byte_0;
    uint64_t lane_channel_2_value;
    uint8_t lane_channel_6_byte_0;
    uint8_t lane_channel_6_byte_1;
    uint8_t lane_channel_6_byte_2;
    uint32_t lane_channel_6_value;
    int16_t lane_channel_6_word_6;
    int16_t lane_channel_7_word_0;
    int64_t lane_channel_7_value;
    double lane_channel_8_a;
    double lane_channel_8_b;
    double lane_channel_8_c;
    double lane_channel_9_a;
    double lane_channel_9_b;
    double lane_channel_9_c;
    double lane_channel_10_a;
    double lane_channel_10_b;
    double lane_channel_10_c;
    uint16_t lane_channel_15_word_0;
    uint16_t lane_channel_15_word_2;
    uint16_t lane_channel_15_word_4;
    uint16_t lane_channel_15_word_6;
} zel_rt_range_rcom_record_t;

#pragma pack(pop)

ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, source_ip, 0);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, source_port, 4);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, destination_ip, 8);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, destination_port, 12);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, packet_count, 16);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, accel_x, 24);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, accel_y, 32);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, accel_z, 40);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, level_accel_x, 48);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, level_accel_y, 56);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, level_accel_z, 64);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_x, 72);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_y, 80);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_z, 88);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_x_copy, 96);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_y_copy, 104);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rate_z_copy, 112);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, latitude, 120);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, longitude, 128);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, altitude, 136);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_x, 144);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_x_kmh, 152);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_y, 160);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_y_kmh, 168);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_unused, 176);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, vehicle_velocity_unused_kmh, 184);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_north, 192);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_north_kmh, 200);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_east, 208);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_east_kmh, 216);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_down, 224);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_down_kmh, 232);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, heading, 240);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, pitch, 248);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, roll, 256);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, curvature, 264);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, unit_value_a, 272);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, unit_value_b, 280);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, unit_value_c, 288);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, unit_value_ab, 296);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, unit_value_c_negated, 304);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_longitudinal, 312);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_lateral, 320);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_rate_longitudinal, 328);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_rate_longitudinal_kmh, 336);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_rate_lateral, 344);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_range_rate_lateral_kmh, 352);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_accel_x, 360);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_accel_y, 368);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_accel_z, 376);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_heading, 384);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_pitch, 392);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_roll, 400);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_rate_x, 408);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_rate_y, 416);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, relative_rate_z, 424);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, gps_minutes, 432);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, time_in_minute_ms, 436);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, utc_offset, 440);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, utc_offset_valid, 441);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, gps_time_valid, 442);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, utc_time_us, 443);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, position_accuracy_north, 451);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, position_accuracy_east, 459);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, position_accuracy_down, 467);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, position_accuracy_horizontal, 475);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, position_accuracy_age, 483);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_3_byte_7, 484);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_accuracy_north, 485);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_accuracy_east, 493);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_accuracy_down, 501);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_accuracy_age, 509);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_accuracy_horizontal, 510);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_4_byte_7, 518);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, heading_accuracy, 519);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, pitch_accuracy, 527);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, roll_accuracy, 535);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, orientation_accuracy_age, 543);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rcom_channel_17_a, 544);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rcom_channel_17_b, 552);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rcom_channel_17_c, 560);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, range_lateral, 564);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, range_longitudinal, 572);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, range_rate_lateral, 580);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, range_rate_longitudinal, 588);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, ttc_longitudinal, 596);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, ttc_longitudinal_accelerated, 604);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, ttc_lateral, 612);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, ttc_lateral_accelerated, 620);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_x, 628);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_y, 636);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_z, 644);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_age, 652);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_accuracy_x, 653);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_accuracy_y, 661);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_accuracy_z, 669);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_antenna_accuracy_age, 677);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_heading, 678);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_pitch, 686);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_distance, 694);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_age, 702);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_heading_accuracy, 703);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_pitch_accuracy, 711);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_distance_accuracy, 719);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, dual_antenna_accuracy_age, 727);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, output_displacement_x, 728);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, output_displacement_y, 736);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, output_displacement_z, 744);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, output_displacement_age, 752);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_75_word_0, 753);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_75_byte_2, 755);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_76_word_0, 756);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_76_word_2, 758);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_76_word_4, 760);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_77_byte_0, 762);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_77_byte_1, 763);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, channel_77_byte_2, 764);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, satellites, 765);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, orientation_mode, 766);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, velocity_mode, 767);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, reserved_768, 768);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_receiver_characters, 769);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_receiver_packets, 771);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_receiver_characters_skipped, 773);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, primary_receiver_packets_skipped, 775);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, rcom_channel_value, 777);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sync, 785);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, navigation_status, 789);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, ncom_status_channel, 793);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, checksum_1, 797);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, checksum_2, 801);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, checksum_3, 805);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, differential_age, 809);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_accel_x, 813);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_accel_y, 821);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_vehicle_velocity_x, 829);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_vehicle_velocity_x_kmh, 837);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_vehicle_velocity_y, 845);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_vehicle_velocity_y_kmh, 853);
ZEL_CHECK_OFFSET(zel_rt_range_ncom_record_t, sample_rate_z, 861);
ZEL_CHECK_RECORD(zel_rt_range_ncom_record_t, 869, 1);

ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, source_ip, 0);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, source_port, 4);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, destination_ip, 8);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, destination_port, 12);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, packet_count, 16);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_word_4, 24);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_0_value, 28);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_7_word_0, 32);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_0_byte_4, 34);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_0_byte_5, 35);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_0_scaled, 36);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_6_byte_0, 44);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_6_byte_1, 45);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_6_byte_2, 46);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_6_value, 47);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_0, 51);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_1, 52);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_2, 53);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_3, 54);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_4, 55);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_5, 56);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_6, 57);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_1_byte_7, 58);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_2_word_0, 59);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_2_word_2, 61);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_2_word_4, 63);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_3_word_0, 65);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_3_word_2, 67);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_3_word_4, 69);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_4_word_0, 71);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_4_word_2, 73);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_4_word_4, 75);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_5_scaled, 77);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, reserved_89, 85);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, reserved_97, 93);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_7_byte_3, 101);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_7_word_4, 102);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_7_byte_6, 104);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_20_a, 105);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_20_b, 113);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_21_a, 121);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_21_b, 129);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_latitude, 137);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_longitude, 145);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_altitude, 153);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_heading, 161);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_13_a, 169);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_13_b, 177);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_13_c, 185);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_14_a, 193);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_14_b, 201);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_14_c, 209);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_15_word_0, 217);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_15_word_2, 219);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_15_word_4, 221);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_15_word_6, 223);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_16_a, 225);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_16_b, 233);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_16_c, 241);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_16_d, 249);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_17_a, 257);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_17_b, 265);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_17_c, 273);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_18_a, 277);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_18_b, 285);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_19_a, 293);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_19_b, 301);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, reserved_313, 309);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, reserved_321, 317);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, sync, 321);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, packet_type, 322);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, packet_length, 323);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, status_channel, 327);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_64, 328);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_number, 329);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_7, 330);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_60, 331);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_61, 332);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_word_62, 333);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, range_lateral, 335);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, range_longitudinal, 343);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, range_rate_lateral, 351);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, range_rate_longitudinal, 359);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, hunter_value_a, 367);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, hunter_value_b, 375);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_value_a, 383);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_value_b, 391);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, hunter_value_c, 399);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_value_c, 407);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_40, 415);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_11_a, 416);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_11_b, 424);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_12_a, 432);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, channel_12_b, 440);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, hunter_address, 448);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, target_address, 452);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, velocity_longitudinal, 456);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, velocity_longitudinal_kmh, 464);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, velocity_lateral, 472);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, velocity_lateral_kmh, 480);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, acceleration_lateral, 488);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, acceleration_lateral_scaled, 496);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, acceleration_longitudinal, 504);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, acceleration_longitudinal_scaled, 512);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_58, 520);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, ext_range_byte_59, 521);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_word_4, 522);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_status_channel, 526);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_48, 527);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_132, 528);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_6, 529);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_7, 530);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_44, 531);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_45, 532);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_46, 533);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_byte_47, 534);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d0, 535);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d1, 543);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d2, 551);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d3, 559);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d4, 567);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d5, 575);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d6, 583);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d7, 591);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d8, 599);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d9, 607);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d10, 615);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d11, 623);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d12, 631);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d13, 639);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d14, 647);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d15, 655);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d16, 663);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d17, 671);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d18, 679);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d19, 687);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d20, 695);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d21, 703);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d22, 711);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d23, 719);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d24, 727);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d25, 735);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d26, 743);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d27, 751);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d28, 759);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d29, 767);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d30, 775);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d31, 783);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d32, 791);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d33, 799);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d34, 807);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d35, 815);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d36, 823);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d37, 831);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d38, 839);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d39, 847);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d40, 855);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d41, 863);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d42, 871);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d43, 879);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d44, 887);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d45, 895);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d46, 903);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d47, 911);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d48, 919);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d49, 927);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d50, 935);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d51, 943);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d52, 951);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d53, 959);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d54, 967);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d55, 975);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d56, 983);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d57, 991);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d58, 999);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d59, 1007);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d60, 1015);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d61, 1023);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d62, 1031);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d63, 1039);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d64, 1047);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_d65, 1055);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_0_a, 1063);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_0_b, 1067);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_0, 1071);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_1, 1072);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_2, 1073);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_3, 1074);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_4, 1075);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_5, 1076);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_6, 1077);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_1_byte_7, 1078);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_2_byte_0, 1079);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_2_value, 1080);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_6_byte_0, 1088);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_6_byte_1, 1089);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_6_byte_2, 1090);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_6_value, 1091);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_6_word_6, 1095);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_7_word_0, 1097);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_7_value, 1099);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_8_a, 1107);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_8_b, 1115);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_8_c, 1123);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_9_a, 1131);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_9_b, 1139);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_9_c, 1147);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_10_a, 1155);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_10_b, 1163);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_10_c, 1171);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_15_word_0, 1179);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_15_word_2, 1181);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_15_word_4, 1183);
ZEL_CHECK_OFFSET(zel_rt_range_rcom_record_t, lane_channel_15_word_6, 1185);
ZEL_CHECK_RECORD(zel_rt_range_rcom_record_t, 1187, 1);

/* clang-format on */

#endif
