#include "zel_rt_range_formatter/src/rcom_lane_status_channels.hpp"

#include <cstring>

#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {

void decode_lane_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                rcom_unit_record& record) {
    switch (channel) {
    case 0:
        record.lane_channel_0_a = read_signed(data, 4);
        record.lane_channel_0_b = read_signed(data + 4, 4);
        return;
    case 1:
        std::memcpy(record.lane_channel_1, data, sizeof(record.lane_channel_1));
        return;
    case 2:
        // Deliberate: of this field and that of channel 7 existing recordings contain the first
        // four bytes only, as many as the readers return.
        record.lane_channel_2_byte_0 = data[0];
        record.lane_channel_2_value = read_unsigned(data + 1, 7);
        return;
    case 6:
        record.lane_channel_6_byte_0 = data[0];
        record.lane_channel_6_byte_1 = data[1];
        record.lane_channel_6_byte_2 = data[2];
        record.lane_channel_6_value = read_unsigned(data + 3, 3);
        record.lane_channel_6_word_6 = read_s16(data + 6);
        return;
    case 7:
        record.lane_channel_7_word_0 = read_s16(data);
        record.lane_channel_7_value = read_signed(data + 2, 6);
        return;
    case 8:
        record.lane_channel_8_a = scaled_signed(data, 3, 1000.0);
        record.lane_channel_8_b = scaled_signed(data + 3, 3, 1000.0);
        record.lane_channel_8_c = scaled_signed(data + 6, 2, 1000.0);
        return;
    case 9:
        record.lane_channel_9_a = scaled_signed(data, 3, 1000.0);
        record.lane_channel_9_b = scaled_signed(data + 3, 3, 1000.0);
        record.lane_channel_9_c = scaled_signed(data + 6, 2, 1000.0);
        return;
    case 10:
        record.lane_channel_10_a = scaled_signed(data, 3, 1000.0);
        record.lane_channel_10_b = scaled_signed(data + 3, 3, 1000.0);
        record.lane_channel_10_c = scaled_signed(data + 6, 2, 1000.0);
        return;
    case 15:
        record.lane_channel_15_word_0 = read_u16(data);
        record.lane_channel_15_word_2 = read_u16(data + 2);
        record.lane_channel_15_word_4 = read_u16(data + 4);
        record.lane_channel_15_word_6 = read_u16(data + 6);
        return;
    default:
        return;
    }
}

} // namespace zel::toolbox::rt_range
