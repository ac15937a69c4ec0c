#include "zel_rt_range_formatter/src/ncom_status_channels.hpp"

#include <cmath>
#include <cstdlib>

#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {
namespace {

/// Deliberate: existing recordings contain the first value twice, not the first and the second.
double horizontal_accuracy(double first) {
    return std::sqrt(first * first + first * first);
}

void full_time(const std::uint8_t* data, ncom_unit_record& record) {
    record.gps_minutes = read_signed(data, 4);
    record.satellites = data[4];
    // Deliberate: the orientation mode (byte 7) takes the slot of the position mode (byte 5).
    record.orientation_mode = data[7];
    record.velocity_mode = data[6];
}

void primary_receiver(const std::uint8_t* data, ncom_unit_record& record) {
    record.primary_receiver_characters = read_u16(data);
    record.primary_receiver_packets = read_u16(data + 2);
    record.primary_receiver_characters_skipped = read_u16(data + 4);
    record.primary_receiver_packets_skipped = read_u16(data + 6);
}

void position_accuracy(const std::uint8_t* data, ncom_unit_record& record) {
    record.position_accuracy_north = scaled_unsigned(data, 2, 1000.0);
    record.position_accuracy_east = scaled_unsigned(data + 2, 2, 1000.0);
    record.position_accuracy_down = scaled_unsigned(data + 4, 2, 1000.0);
    record.position_accuracy_age = data[6];
    record.channel_3_byte_7 = data[7];
    record.position_accuracy_horizontal = horizontal_accuracy(record.position_accuracy_north);
}

void velocity_accuracy(const std::uint8_t* data, ncom_unit_record& record) {
    record.velocity_accuracy_north = scaled_signed(data, 2, 1000.0);
    record.velocity_accuracy_east = scaled_signed(data + 2, 2, 1000.0);
    record.velocity_accuracy_down = scaled_signed(data + 4, 2, 1000.0);
    record.velocity_accuracy_age = data[6];
    record.channel_4_byte_7 = data[7];
    record.velocity_accuracy_horizontal = horizontal_accuracy(record.velocity_accuracy_north);
}

void orientation_accuracy(const std::uint8_t* data, ncom_unit_record& record) {
    record.heading_accuracy = to_degrees(scaled_unsigned(data, 2, 100000.0));
    record.pitch_accuracy = to_degrees(scaled_unsigned(data + 2, 2, 100000.0));
    record.roll_accuracy = to_degrees(scaled_unsigned(data + 4, 2, 100000.0));
    record.orientation_accuracy_age = data[6];
}

void primary_antenna(const std::uint8_t* data, ncom_unit_record& record) {
    record.primary_antenna_x = scaled_signed(data, 2, 1000.0);
    record.primary_antenna_y = scaled_signed(data + 2, 2, 1000.0);
    record.primary_antenna_z = scaled_signed(data + 4, 2, 1000.0);
    record.primary_antenna_age = data[6];
}

void dual_antenna(const std::uint8_t* data, ncom_unit_record& record) {
    record.dual_antenna_heading = to_degrees(scaled_signed(data, 2, 10000.0));
    record.dual_antenna_pitch = to_degrees(scaled_signed(data + 2, 2, 10000.0));
    record.dual_antenna_distance = scaled_signed(data + 4, 2, 1000.0);
    record.dual_antenna_age = data[6];
}

void primary_antenna_accuracy(const std::uint8_t* data, ncom_unit_record& record) {
    record.primary_antenna_accuracy_x = scaled_unsigned(data, 2, 10000.0);
    record.primary_antenna_accuracy_y = scaled_unsigned(data + 2, 2, 10000.0);
    record.primary_antenna_accuracy_z = scaled_unsigned(data + 4, 2, 10000.0);
    record.primary_antenna_accuracy_age = data[6];
}

void dual_antenna_accuracy(const std::uint8_t* data, ncom_unit_record& record) {
    record.dual_antenna_heading_accuracy = to_degrees(scaled_unsigned(data, 2, 10000.0));
    record.dual_antenna_pitch_accuracy = to_degrees(scaled_unsigned(data + 2, 2, 10000.0));
    record.dual_antenna_distance_accuracy = scaled_unsigned(data + 4, 2, 1000.0);
    record.dual_antenna_accuracy_age = data[6];
}

void utc_offset(const std::uint8_t* data, ncom_unit_record& record) {
    const int offset = static_cast<std::int8_t>(data[7]) >> 1;
    record.utc_offset = static_cast<std::uint8_t>(std::abs(offset));
    record.utc_offset_valid = bit_of(data[7], 0);
}

void differential_age(const std::uint8_t* data, ncom_unit_record& record) {
    record.differential_age = read_unsigned(data, 2) / 100;
}

void output_displacement(const std::uint8_t* data, ncom_unit_record& record) {
    record.output_displacement_x = scaled_signed(data, 2, 1000.0);
    record.output_displacement_y = scaled_unsigned(data + 2, 2, 1000.0);
    record.output_displacement_z = scaled_unsigned(data + 4, 2, 1000.0);
    record.output_displacement_age = data[6];
}

void channel_75(const std::uint8_t* data, ncom_unit_record& record) {
    record.channel_75_word_0 = read_u16(data);
    record.channel_75_byte_2 = data[2];
}

void channel_76(const std::uint8_t* data, ncom_unit_record& record) {
    record.channel_76_word_0 = read_u16(data);
    record.channel_76_word_2 = read_u16(data + 2);
    record.channel_76_word_4 = read_u16(data + 4);
}

void channel_77(const std::uint8_t* data, ncom_unit_record& record) {
    record.channel_77_byte_0 = data[0];
    record.channel_77_byte_1 = data[1];
    record.channel_77_byte_2 = data[2];
}

} // namespace

void decode_ncom_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                ncom_unit_record& record) {
    switch (channel) {
    case 0:
        return full_time(data, record);
    case 2:
        return primary_receiver(data, record);
    case 3:
        return position_accuracy(data, record);
    case 4:
        return velocity_accuracy(data, record);
    case 5:
        return orientation_accuracy(data, record);
    case 12:
        return primary_antenna(data, record);
    case 13:
        return dual_antenna(data, record);
    case 14:
        return primary_antenna_accuracy(data, record);
    case 15:
        return dual_antenna_accuracy(data, record);
    case 16:
        return utc_offset(data, record);
    case 20:
        return differential_age(data, record);
    case 26:
        return output_displacement(data, record);
    case 75:
        return channel_75(data, record);
    case 76:
        return channel_76(data, record);
    case 77:
        return channel_77(data, record);
    default:
        return;
    }
}

} // namespace zel::toolbox::rt_range
