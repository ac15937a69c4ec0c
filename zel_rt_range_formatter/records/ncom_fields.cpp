#include "zel_rt_range_formatter/records/ncom_fields.hpp"

#include <cstddef>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace zel::toolbox::rt_range {
namespace {

using namespace origins;

// clang-format off
#define ENDPOINT(offset, name, type, origin, meaning)                                              \
    field_at(offset, offsetof(ncom_unit_record, endpoint.name), #name, field_type::type, "",       \
             origin, meaning)
#define FIELD(offset, name, unit, origin, meaning)                                                 \
    field_at(offset, offsetof(ncom_unit_record, name), #name,                                      \
             stored_as<decltype(ncom_unit_record::name)>(), unit, origin, meaning)

// Offset from the start of the record, name, unit, what brings the value, meaning. In a package the
// record follows the four bytes of its tag.
constexpr field fields[] = {
    ENDPOINT(0, source_ip, ipv4, ncom,
        "IPv4 source address; for wrapped NCOM, the address of the wrapped unit"),
    ENDPOINT(4, source_port, u32, ncom,
        "UDP source port; for wrapped NCOM, that of the RCOM datagram"),
    ENDPOINT(8, destination_ip, ipv4, ncom,
        "IPv4 destination address; for wrapped NCOM, the source address of the RCOM datagram"),
    ENDPOINT(12, destination_port, u32, ncom,
        "UDP destination port; for wrapped NCOM, that of the RCOM datagram"),
    ENDPOINT(16, packet_count, u64, ncom,
        "NCOM packets, direct or wrapped, assigned to this unit since the last reset"),
    FIELD(24, accel_x, "m/s²", ncom, "acceleration, forward"),
    FIELD(32, accel_y, "m/s²", ncom, "acceleration, to the left"),
    FIELD(40, accel_z, "m/s²", ncom, "acceleration, up"),
    FIELD(48, level_accel_x, "m/s²", ncom, "acceleration in the level frame, forward"),
    FIELD(56, level_accel_y, "m/s²", ncom, "acceleration in the level frame, to the left"),
    FIELD(64, level_accel_z, "m/s²", ncom, "acceleration in the level frame, up"),
    FIELD(72, rate_x, "deg/s", ncom, "angular rate about the forward axis"),
    FIELD(80, rate_y, "deg/s", ncom, "angular rate about the axis to the left"),
    FIELD(88, rate_z, "deg/s", ncom, "angular rate about the upward axis"),
    FIELD(96, rate_x_copy, "deg/s", ncom, "angular rate about the forward axis, sign as received"),
    FIELD(104, rate_y_copy, "deg/s", ncom,
        "angular rate about the axis to the right, sign as received"),
    FIELD(112, rate_z_copy, "deg/s", ncom,
        "angular rate about the downward axis, sign as received"),
    FIELD(120, latitude, "deg", ncom_or_range_channel(8),
        "latitude; of a target also from RCOM status channel 8, unless both of its values are 0"),
    FIELD(128, longitude, "deg", ncom_or_range_channel(8),
        "longitude; of a target also from RCOM status channel 8, unless both of its values are "
        "0"),
    FIELD(136, altitude, "m", ncom_or_range_channel(10),
        "altitude; of a target also from RCOM status channel 10, unless both of its values are "
        "0"),
    FIELD(144, vehicle_velocity_x, "m/s", ncom, "velocity forward"),
    FIELD(152, vehicle_velocity_x_kmh, "km/h", ncom, "vehicle_velocity_x in km/h"),
    FIELD(160, vehicle_velocity_y, "m/s", ncom, "velocity to the left"),
    FIELD(168, vehicle_velocity_y_kmh, "km/h", ncom, "vehicle_velocity_y in km/h"),
    FIELD(176, vehicle_velocity_unused, "m/s", nothing,
        "never written by a packet; alternates between 0 and -0"),
    FIELD(184, vehicle_velocity_unused_kmh, "km/h", nothing,
        "never written by a packet; alternates between 0 and -0"),
    FIELD(192, velocity_north, "m/s", ncom, "velocity north"),
    FIELD(200, velocity_north_kmh, "km/h", ncom, "velocity_north in km/h"),
    FIELD(208, velocity_east, "m/s", ncom, "velocity east, negated: positive to the west"),
    FIELD(216, velocity_east_kmh, "km/h", ncom, "velocity_east in km/h"),
    FIELD(224, velocity_down, "m/s", ncom, "velocity down, negated: positive upward"),
    FIELD(232, velocity_down_kmh, "km/h", ncom, "velocity_down in km/h"),
    FIELD(240, heading, "deg", ncom_or_range_channel(10),
        "heading after the heading filter; of a target also from RCOM status channel 10, "
        "unless both of its values are 0, then unfiltered and unsigned"),
    FIELD(248, pitch, "deg", ncom, "pitch, negated: positive nose down"),
    FIELD(256, roll, "deg", ncom, "roll"),
    FIELD(264, curvature, "1/m", ncom_and_channel(4),
        "yaw rate over speed; 0 unless the speed exceeds its own accuracy and "
        "velocity_accuracy_age is below 150"),
    FIELD(272, unit_value_a, "", ext_range,
        "extended range packet: hunter_value_a for the hunter, target_value_a for a target"),
    FIELD(280, unit_value_b, "", ext_range,
        "extended range packet: hunter_value_b for the hunter, target_value_b for a target"),
    FIELD(288, unit_value_c, "", ext_range,
        "extended range packet: hunter_value_c for the hunter, target_value_c for a target"),
    FIELD(296, unit_value_ab, "", ext_range,
        "square root of unit_value_a squared plus unit_value_b squared"),
    FIELD(304, unit_value_c_negated, "", ext_range, "unit_value_c, negated"),
    FIELD(312, relative_range_longitudinal, "m", ext_range, "copy of range_longitudinal"),
    FIELD(320, relative_range_lateral, "m", ext_range, "copy of range_lateral"),
    FIELD(328, relative_range_rate_longitudinal, "m/s", ext_range,
        "copy of range_rate_longitudinal"),
    FIELD(336, relative_range_rate_longitudinal_kmh, "km/h", ext_range,
        "range_rate_longitudinal in km/h"),
    FIELD(344, relative_range_rate_lateral, "m/s", ext_range, "copy of range_rate_lateral"),
    FIELD(352, relative_range_rate_lateral_kmh, "km/h", ext_range, "range_rate_lateral in km/h"),
    FIELD(360, relative_accel_x, "m/s²", ncom_and_hunter_ncom,
        "accel_x of this unit minus that of the hunter"),
    FIELD(368, relative_accel_y, "m/s²", ncom_and_hunter_ncom,
        "accel_y of this unit minus that of the hunter"),
    FIELD(376, relative_accel_z, "m/s²", ncom_and_hunter_ncom,
        "accel_z of this unit minus that of the hunter"),
    FIELD(384, relative_heading, "deg", ncom_and_hunter_ncom,
        "heading of the hunter minus that of this unit, -180 to 180"),
    FIELD(392, relative_pitch, "deg", ncom_and_hunter_ncom,
        "pitch of the hunter minus that of this unit, -180 to 180"),
    FIELD(400, relative_roll, "deg", ncom_and_hunter_ncom,
        "roll of the hunter minus that of this unit, both in 0 to 360, not wrapped"),
    FIELD(408, relative_rate_x, "deg/s", ncom_and_hunter_ncom,
        "rate_x of this unit minus that of the hunter"),
    FIELD(416, relative_rate_y, "deg/s", ncom_and_hunter_ncom,
        "rate_y of this unit minus that of the hunter"),
    FIELD(424, relative_rate_z, "deg/s", ncom_and_hunter_ncom,
        "rate_z of this unit minus that of the hunter"),
    FIELD(432, gps_minutes, "min", ncom_channel(0),
        "minutes since the GPS epoch, from status channel 0, incremented at each minute "
        "roll-over"),
    FIELD(436, time_in_minute_ms, "ms", ncom, "time within the GPS minute"),
    FIELD(440, utc_offset, "s", ncom_channel(16),
        "status channel 16: difference between GPS time and UTC, without sign"),
    FIELD(441, utc_offset_valid, "", ncom_channel(16),
        "status channel 16: 1 when utc_offset is valid"),
    FIELD(442, gps_time_valid, "", ncom_channel(16),
        "copy of utc_offset_valid, made with each NCOM packet of the unit; utc_time_us is "
        "updated only while it is 1"),
    FIELD(443, utc_time_us, "us", ncom_channels(0, 16),
        "GPS time since 1970 less one second; not UTC, as leap seconds and utc_offset are not "
        "applied; usable after status channels 0 and 16; in a sample batch, the time of the "
        "previous packet"),
    FIELD(451, position_accuracy_north, "m", ncom_channel(3),
        "status channel 3: north position accuracy"),
    FIELD(459, position_accuracy_east, "m", ncom_channel(3),
        "status channel 3: east position accuracy"),
    FIELD(467, position_accuracy_down, "m", ncom_channel(3),
        "status channel 3: down position accuracy"),
    FIELD(475, position_accuracy_horizontal, "m", ncom_channel(3),
        "position_accuracy_north times the square root of 2"),
    FIELD(483, position_accuracy_age, "", ncom_channel(3),
        "status channel 3: age of the accuracies"),
    FIELD(484, channel_3_byte_7, "", ncom_channel(3), "status channel 3: byte 7"),
    FIELD(485, velocity_accuracy_north, "m/s", ncom_channel(4),
        "status channel 4: north velocity accuracy"),
    FIELD(493, velocity_accuracy_east, "m/s", ncom_channel(4),
        "status channel 4: east velocity accuracy"),
    FIELD(501, velocity_accuracy_down, "m/s", ncom_channel(4),
        "status channel 4: down velocity accuracy"),
    FIELD(509, velocity_accuracy_age, "", ncom_channel(4),
        "status channel 4: age of the accuracies; 150 or more is outdated"),
    FIELD(510, velocity_accuracy_horizontal, "m/s", ncom_channel(4),
        "velocity_accuracy_north times the square root of 2"),
    FIELD(518, channel_4_byte_7, "", ncom_channel(4), "status channel 4: byte 7"),
    FIELD(519, heading_accuracy, "deg", ncom_channel(5), "status channel 5: heading accuracy"),
    FIELD(527, pitch_accuracy, "deg", ncom_channel(5), "status channel 5: pitch accuracy"),
    FIELD(535, roll_accuracy, "deg", ncom_channel(5), "status channel 5: roll accuracy"),
    FIELD(543, orientation_accuracy_age, "", ncom_channel(5),
        "status channel 5: age of the accuracies"),
    FIELD(544, rcom_channel_17_a, "", range_channel(17),
        "RCOM status channel 17, first value, of the last plausible packet with that channel "
        "for any unit"),
    FIELD(552, rcom_channel_17_b, "", range_channel(17),
        "RCOM status channel 17, second value, of the last plausible packet with that channel "
        "for any unit"),
    FIELD(560, rcom_channel_17_c, "", range_channel(17),
        "RCOM status channel 17, third value, of the last plausible packet with that channel "
        "for any unit"),
    FIELD(564, range_lateral, "m", ext_range,
        "lateral range from the hunter, positive to the left"),
    FIELD(572, range_longitudinal, "m", ext_range, "longitudinal range from the hunter"),
    FIELD(580, range_rate_lateral, "m/s", ext_range, "lateral range rate, positive to the left"),
    FIELD(588, range_rate_longitudinal, "m/s", ext_range, "longitudinal range rate"),
    FIELD(596, ttc_longitudinal, "s", ext_range,
        "longitudinal time to collision at constant range rate; negative while moving apart; "
        "2.2250738585072014e-308 means none"),
    FIELD(604, ttc_longitudinal_accelerated, "s", ext_range,
        "not a time to collision: the absolute value of a solution t of acceleration / 2 * t² "
        "+ rate * t = range, possibly in the past; equal to ttc_longitudinal while the "
        "absolute acceleration_longitudinal_scaled is at most 0.05; 2.2250738585072014e-308 "
        "means none"),
    FIELD(612, ttc_lateral, "s", ext_range,
        "lateral time to collision at constant range rate; negative while moving apart; "
        "2.2250738585072014e-308 means none"),
    FIELD(620, ttc_lateral_accelerated, "s", ext_range,
        "not a time to collision: the absolute value of a solution t of acceleration / 2 * t² "
        "+ rate * t = range, possibly in the past; equal to ttc_lateral while the absolute "
        "acceleration_lateral_scaled is at most 0.05; 2.2250738585072014e-308 means none"),
    FIELD(628, primary_antenna_x, "m", ncom_channel(12),
        "status channel 12: position of the primary antenna, forward"),
    FIELD(636, primary_antenna_y, "m", ncom_channel(12),
        "status channel 12: position of the primary antenna, to the right"),
    FIELD(644, primary_antenna_z, "m", ncom_channel(12),
        "status channel 12: position of the primary antenna, down"),
    FIELD(652, primary_antenna_age, "", ncom_channel(12), "status channel 12: age of the position"),
    FIELD(653, primary_antenna_accuracy_x, "m", ncom_channel(14),
        "status channel 14: accuracy of the primary antenna's position, forward"),
    FIELD(661, primary_antenna_accuracy_y, "m", ncom_channel(14),
        "status channel 14: accuracy of the primary antenna's position, to the right"),
    FIELD(669, primary_antenna_accuracy_z, "m", ncom_channel(14),
        "status channel 14: accuracy of the primary antenna's position, down"),
    FIELD(677, primary_antenna_accuracy_age, "", ncom_channel(14),
        "status channel 14: age of the accuracies"),
    FIELD(678, dual_antenna_heading, "deg", ncom_channel(13),
        "status channel 13: heading of the antenna pair"),
    FIELD(686, dual_antenna_pitch, "deg", ncom_channel(13),
        "status channel 13: pitch of the antenna pair"),
    FIELD(694, dual_antenna_distance, "m", ncom_channel(13),
        "status channel 13: distance between the antennas"),
    FIELD(702, dual_antenna_age, "", ncom_channel(13), "status channel 13: age of the orientation"),
    FIELD(703, dual_antenna_heading_accuracy, "deg", ncom_channel(15),
        "status channel 15: accuracy of the antenna pair's heading"),
    FIELD(711, dual_antenna_pitch_accuracy, "deg", ncom_channel(15),
        "status channel 15: accuracy of the antenna pair's pitch"),
    FIELD(719, dual_antenna_distance_accuracy, "m", ncom_channel(15),
        "status channel 15: accuracy of the distance between the antennas"),
    FIELD(727, dual_antenna_accuracy_age, "", ncom_channel(15),
        "status channel 15: age of the accuracies"),
    FIELD(728, output_displacement_x, "m", ncom_channel(26),
        "status channel 26: lever arm of the output point, forward"),
    FIELD(736, output_displacement_y, "m", ncom_channel(26),
        "status channel 26: lever arm of the output point, to the right; decoded as unsigned: "
        "-1 mm becomes 65.535 m"),
    FIELD(744, output_displacement_z, "m", ncom_channel(26),
        "status channel 26: lever arm of the output point, down; decoded as unsigned: -1 mm "
        "becomes 65.535 m"),
    FIELD(752, output_displacement_age, "", ncom_channel(26),
        "status channel 26: age of the lever arm"),
    FIELD(753, channel_75_word_0, "", ncom_channel(75), "status channel 75: bytes 0 and 1"),
    FIELD(755, channel_75_byte_2, "", ncom_channel(75), "status channel 75: byte 2"),
    FIELD(756, channel_76_word_0, "", ncom_channel(76), "status channel 76: bytes 0 and 1"),
    FIELD(758, channel_76_word_2, "", ncom_channel(76), "status channel 76: bytes 2 and 3"),
    FIELD(760, channel_76_word_4, "", ncom_channel(76), "status channel 76: bytes 4 and 5"),
    FIELD(762, channel_77_byte_0, "", ncom_channel(77), "status channel 77: byte 0"),
    FIELD(763, channel_77_byte_1, "", ncom_channel(77), "status channel 77: byte 1"),
    FIELD(764, channel_77_byte_2, "", ncom_channel(77), "status channel 77: byte 2"),
    FIELD(765, satellites, "", ncom_channel(0), "status channel 0: number of satellites"),
    FIELD(766, orientation_mode, "", ncom_channel(0),
        "status channel 0: orientation mode, stored in place of the position mode"),
    FIELD(767, velocity_mode, "", ncom_channel(0), "status channel 0: velocity mode"),
    FIELD(768, reserved_768, "", nothing, "never written"),
    FIELD(769, primary_receiver_characters, "", ncom_channel(2),
        "status channel 2: characters received from the primary receiver"),
    FIELD(771, primary_receiver_packets, "", ncom_channel(2),
        "status channel 2: packets received from the primary receiver"),
    FIELD(773, primary_receiver_characters_skipped, "", ncom_channel(2),
        "status channel 2: characters from the primary receiver that were skipped"),
    FIELD(775, primary_receiver_packets_skipped, "", ncom_channel(2),
        "status channel 2: packets from the primary receiver that were skipped"),
    FIELD(777, rcom_channel_value, "", range_channel_by_unit(0, 5),
        "RCOM status channel 0 (targets) or 5 (hunter), of the last plausible packet with that "
        "channel for any unit; 1.7976931348623157e+308 means no value"),
    FIELD(785, sync, "", ncom, "sync byte of the packet, 231"),
    FIELD(789, navigation_status, "", ncom, "navigation status"),
    FIELD(793, ncom_status_channel, "", ncom,
        "status channel of the last NCOM packet of any unit; set in the hunter's record only"),
    FIELD(797, checksum_1, "", ncom, "first checksum, not verified"),
    FIELD(801, checksum_2, "", ncom, "second checksum, not verified"),
    FIELD(805, checksum_3, "", ncom, "third checksum, not verified"),
    FIELD(809, differential_age, "s", ncom_channel(20),
        "status channel 20: age of the differential corrections, whole seconds"),
    FIELD(813, sample_accel_x, "m/s²", ncom, "batch of all units' packets: accel_x, filtered"),
    FIELD(821, sample_accel_y, "m/s²", ncom, "batch of all units' packets: accel_y, filtered"),
    FIELD(829, sample_vehicle_velocity_x, "m/s", ncom,
        "batch of all units' packets: vehicle_velocity_x, filtered"),
    FIELD(837, sample_vehicle_velocity_x_kmh, "km/h", ncom,
        "batch of all units' packets: vehicle_velocity_x_kmh, filtered"),
    FIELD(845, sample_vehicle_velocity_y, "m/s", ncom,
        "batch of all units' packets: vehicle_velocity_y, filtered"),
    FIELD(853, sample_vehicle_velocity_y_kmh, "km/h", ncom,
        "batch of all units' packets: vehicle_velocity_y_kmh, filtered"),
    FIELD(861, sample_rate_z, "deg/s", ncom, "batch of all units' packets: rate_z_copy, filtered"),
};

#undef FIELD
#undef ENDPOINT
// clang-format on

static_assert(cover(fields, sizeof(ncom_unit_record)));
static_assert(sizeof(ncom_unit_record) == 869);

} // namespace

std::span<const field> ncom_fields() {
    return fields;
}

} // namespace zel::toolbox::rt_range
