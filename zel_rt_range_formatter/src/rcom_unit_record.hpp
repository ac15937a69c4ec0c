// Decoded state of the RT-Range unit that sends RCOM.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zel_rt_range_formatter/src/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// RCOM unit record, 1187 bytes. It leaves in every RCOM package byte for byte, so its layout is
/// part of the output format. The fields are described one by one in fields/rcom_fields.cpp.
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
    std::uint32_t hunter_address; ///< bytes as they stand on the wire
    std::uint32_t target_address; ///< bytes as they stand on the wire

    // Motion (m/s, m/s²), each with a companion times 3.6.
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

/// Whether a field stands at this offset of the package data, where the record's tag takes the
/// first four bytes.
#define ZEL_PIN(field, package_offset)                                                             \
    static_assert(offsetof(rcom_unit_record, field) == (package_offset)-4)

ZEL_PIN(ext_range_word_4, 28);
ZEL_PIN(channel_0_value, 32);
ZEL_PIN(channel_7_word_0, 36);
ZEL_PIN(channel_0_byte_4, 38);
ZEL_PIN(channel_0_byte_5, 39);
ZEL_PIN(channel_0_scaled, 40);
ZEL_PIN(channel_6_byte_0, 48);
ZEL_PIN(channel_6_byte_1, 49);
ZEL_PIN(channel_6_byte_2, 50);
ZEL_PIN(channel_6_value, 51);
ZEL_PIN(channel_1, 55);
ZEL_PIN(channel_2_word_0, 63);
ZEL_PIN(channel_2_word_2, 65);
ZEL_PIN(channel_2_word_4, 67);
ZEL_PIN(channel_3_word_0, 69);
ZEL_PIN(channel_3_word_2, 71);
ZEL_PIN(channel_3_word_4, 73);
ZEL_PIN(channel_4_word_0, 75);
ZEL_PIN(channel_4_word_2, 77);
ZEL_PIN(channel_4_word_4, 79);
ZEL_PIN(channel_5_scaled, 81);
ZEL_PIN(reserved_89, 89);
ZEL_PIN(reserved_97, 97);
ZEL_PIN(channel_7_byte_3, 105);
ZEL_PIN(channel_7_word_4, 106);
ZEL_PIN(channel_7_byte_6, 108);
ZEL_PIN(channel_20_a, 109);
ZEL_PIN(channel_20_b, 117);
ZEL_PIN(channel_21_a, 125);
ZEL_PIN(channel_21_b, 133);
ZEL_PIN(target_latitude, 141);
ZEL_PIN(target_longitude, 149);
ZEL_PIN(target_altitude, 157);
ZEL_PIN(target_heading, 165);
ZEL_PIN(channel_13_a, 173);
ZEL_PIN(channel_13_b, 181);
ZEL_PIN(channel_13_c, 189);
ZEL_PIN(channel_14_a, 197);
ZEL_PIN(channel_14_b, 205);
ZEL_PIN(channel_14_c, 213);
ZEL_PIN(channel_15_word_0, 221);
ZEL_PIN(channel_15_word_2, 223);
ZEL_PIN(channel_15_word_4, 225);
ZEL_PIN(channel_15_word_6, 227);
ZEL_PIN(channel_16_a, 229);
ZEL_PIN(channel_16_b, 237);
ZEL_PIN(channel_16_c, 245);
ZEL_PIN(channel_16_d, 253);
ZEL_PIN(channel_17_a, 261);
ZEL_PIN(channel_17_b, 269);
ZEL_PIN(channel_17_c, 277);
ZEL_PIN(channel_18_a, 281);
ZEL_PIN(channel_18_b, 289);
ZEL_PIN(channel_19_a, 297);
ZEL_PIN(channel_19_b, 305);
ZEL_PIN(reserved_313, 313);
ZEL_PIN(reserved_321, 321);
ZEL_PIN(sync, 325);
ZEL_PIN(packet_type, 326);
ZEL_PIN(packet_length, 327);
ZEL_PIN(status_channel, 331);
ZEL_PIN(ext_range_byte_64, 332);
ZEL_PIN(target_number, 333);
ZEL_PIN(ext_range_byte_7, 334);
ZEL_PIN(ext_range_byte_60, 335);
ZEL_PIN(ext_range_byte_61, 336);
ZEL_PIN(ext_range_word_62, 337);
ZEL_PIN(range_lateral, 339);
ZEL_PIN(range_longitudinal, 347);
ZEL_PIN(range_rate_lateral, 355);
ZEL_PIN(range_rate_longitudinal, 363);
ZEL_PIN(hunter_value_a, 371);
ZEL_PIN(hunter_value_b, 379);
ZEL_PIN(target_value_a, 387);
ZEL_PIN(target_value_b, 395);
ZEL_PIN(hunter_value_c, 403);
ZEL_PIN(target_value_c, 411);
ZEL_PIN(ext_range_byte_40, 419);
ZEL_PIN(channel_11_a, 420);
ZEL_PIN(channel_11_b, 428);
ZEL_PIN(channel_12_a, 436);
ZEL_PIN(channel_12_b, 444);
ZEL_PIN(hunter_address, 452);
ZEL_PIN(target_address, 456);
ZEL_PIN(velocity_longitudinal, 460);
ZEL_PIN(velocity_longitudinal_kmh, 468);
ZEL_PIN(velocity_lateral, 476);
ZEL_PIN(velocity_lateral_kmh, 484);
ZEL_PIN(acceleration_lateral, 492);
ZEL_PIN(acceleration_lateral_scaled, 500);
ZEL_PIN(acceleration_longitudinal, 508);
ZEL_PIN(acceleration_longitudinal_scaled, 516);
ZEL_PIN(ext_range_byte_58, 524);
ZEL_PIN(ext_range_byte_59, 525);
ZEL_PIN(lane_word_4, 526);
ZEL_PIN(lane_status_channel, 530);
ZEL_PIN(lane_byte_48, 531);
ZEL_PIN(lane_byte_132, 532);
ZEL_PIN(lane_byte_6, 533);
ZEL_PIN(lane_byte_7, 534);
ZEL_PIN(lane_byte_44, 535);
ZEL_PIN(lane_byte_45, 536);
ZEL_PIN(lane_byte_46, 537);
ZEL_PIN(lane_byte_47, 538);
ZEL_PIN(lane_values, 539);
ZEL_PIN(lane_channel_0_a, 1067);
ZEL_PIN(lane_channel_0_b, 1071);
ZEL_PIN(lane_channel_1, 1075);
ZEL_PIN(lane_channel_2_byte_0, 1083);
ZEL_PIN(lane_channel_2_value, 1084);
ZEL_PIN(lane_channel_6_byte_0, 1092);
ZEL_PIN(lane_channel_6_byte_1, 1093);
ZEL_PIN(lane_channel_6_byte_2, 1094);
ZEL_PIN(lane_channel_6_value, 1095);
ZEL_PIN(lane_channel_6_word_6, 1099);
ZEL_PIN(lane_channel_7_word_0, 1101);
ZEL_PIN(lane_channel_7_value, 1103);
ZEL_PIN(lane_channel_8_a, 1111);
ZEL_PIN(lane_channel_8_b, 1119);
ZEL_PIN(lane_channel_8_c, 1127);
ZEL_PIN(lane_channel_9_a, 1135);
ZEL_PIN(lane_channel_9_b, 1143);
ZEL_PIN(lane_channel_9_c, 1151);
ZEL_PIN(lane_channel_10_a, 1159);
ZEL_PIN(lane_channel_10_b, 1167);
ZEL_PIN(lane_channel_10_c, 1175);
ZEL_PIN(lane_channel_15_word_0, 1183);
ZEL_PIN(lane_channel_15_word_2, 1185);
ZEL_PIN(lane_channel_15_word_4, 1187);
ZEL_PIN(lane_channel_15_word_6, 1189);

#undef ZEL_PIN

static_assert(sizeof(rcom_unit_record) == 1187);

} // namespace zel::toolbox::rt_range
