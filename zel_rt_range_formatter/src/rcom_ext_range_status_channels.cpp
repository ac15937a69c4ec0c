#include "zel_rt_range_formatter/src/rcom_ext_range_status_channels.hpp"

#include <cstring>
#include <limits>

#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {
namespace {

/// Value in thousandths. The sender's 65535 stands for no value, which the record holds as the
/// largest double.
double thousandths_or_none(const std::uint8_t* bytes) {
    constexpr std::uint16_t none = 65535;
    return read_u16(bytes) == none ? std::numeric_limits<double>::max()
                                   : scaled_unsigned(bytes, 2, 1000.0);
}

} // namespace

bool decode_ext_range_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                     rcom_unit_record& record) {
    switch (channel) {
    case 0:
        record.channel_0_value = read_signed(data, 4);
        record.channel_0_byte_4 = data[4];
        record.channel_0_byte_5 = data[5];
        record.channel_0_scaled = thousandths_or_none(data + 6);
        return true;
    case 1:
        std::memcpy(record.channel_1, data, sizeof(record.channel_1));
        return true;
    case 2:
        record.channel_2_word_0 = read_u16(data);
        record.channel_2_word_2 = read_u16(data + 2);
        record.channel_2_word_4 = read_u16(data + 4);
        return true;
    case 3:
        record.channel_3_word_0 = read_u16(data);
        record.channel_3_word_2 = read_u16(data + 2);
        record.channel_3_word_4 = read_u16(data + 4);
        return true;
    case 4:
        record.channel_4_word_0 = read_u16(data);
        record.channel_4_word_2 = read_u16(data + 2);
        record.channel_4_word_4 = read_u16(data + 4);
        return true;
    case 5:
        record.channel_5_scaled = thousandths_or_none(data);
        return true;
    case 6:
        record.channel_6_byte_0 = data[0];
        record.channel_6_byte_1 = data[1];
        record.channel_6_byte_2 = data[2];
        record.channel_6_value = read_unsigned(data + 3, 3);
        return true;
    case 7: // Deliberate: bytes 2 and 7 are skipped.
        record.channel_7_word_0 = read_s16(data);
        record.channel_7_byte_3 = data[3];
        record.channel_7_word_4 = read_u16(data + 4);
        record.channel_7_byte_6 = data[6];
        return true;
    case 8:
        record.target_latitude = scaled_signed(data, 4, 1e7);
        record.target_longitude = scaled_signed(data + 4, 4, 1e7);
        return true;
    case 9:
        record.hunter_address = read_unsigned(data, 4);
        record.target_address = read_unsigned(data + 4, 4);
        return true;
    case 10:
        record.target_altitude = scaled_signed(data, 4, 1000.0);
        record.target_heading = scaled_unsigned(data + 4, 4, 1e7);
        return true;
    case 11:
        record.channel_11_a = scaled_signed(data, 4, 1e7);
        record.channel_11_b = scaled_signed(data + 4, 4, 1e7);
        return true;
    case 12:
        record.channel_12_a = scaled_signed(data, 4, 1000.0);
        record.channel_12_b = scaled_signed(data + 4, 4, 1e7);
        return true;
    case 13:
        record.channel_13_a = scaled_signed(data, 3, 1000.0);
        record.channel_13_b = scaled_signed(data + 3, 3, 1000.0);
        record.channel_13_c = scaled_signed(data + 6, 2, 1000.0);
        return true;
    case 14:
        record.channel_14_a = scaled_signed(data, 3, 1000.0);
        record.channel_14_b = scaled_signed(data + 3, 3, 1000.0);
        record.channel_14_c = scaled_signed(data + 6, 2, 1000.0);
        return true;
    case 15:
        record.channel_15_word_0 = read_u16(data);
        record.channel_15_word_2 = read_u16(data + 2);
        record.channel_15_word_4 = read_u16(data + 4);
        record.channel_15_word_6 = read_u16(data + 6);
        return true;
    case 16:
        record.channel_16_a = scaled_unsigned(data, 2, 1000.0);
        record.channel_16_b = scaled_unsigned(data + 2, 2, 1000.0);
        record.channel_16_c = scaled_unsigned(data + 4, 2, 1000.0);
        record.channel_16_d = scaled_unsigned(data + 6, 2, 1000.0);
        return true;
    case 17:
        record.channel_17_a = scaled_unsigned(data, 2, 1000.0);
        record.channel_17_b = scaled_unsigned(data + 2, 2, 1000.0);
        record.channel_17_c = read_unsigned(data + 4, 2);
        return true;
    case 18:
        record.channel_18_a = read_float(data, 4);
        record.channel_18_b = read_float(data + 4, 4);
        return true;
    case 19:
        record.channel_19_a = read_float(data, 4);
        record.channel_19_b = read_float(data + 4, 4);
        return true;
    case 20:
        record.channel_20_a = scaled_signed(data, 4, 1e7);
        record.channel_20_b = scaled_signed(data + 4, 4, 1e7);
        return true;
    case 21:
        record.channel_21_a = scaled_signed(data, 4, 1000.0);
        record.channel_21_b = scaled_signed(data + 4, 4, 1e7);
        return true;
    default:
        return false;
    }
}

} // namespace zel::toolbox::rt_range
