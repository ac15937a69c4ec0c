#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/rcom_lane_status_channels.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;

/// Smallest packet length that a sender may state, and the number of bytes that are read.
constexpr std::uint16_t smallest_stated_length = 129;
constexpr std::uint64_t lane_packet_size = 133;

constexpr const char* lane_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_frame_lane_packet";

/// Decodes `count` consecutive 16-bit fields into the D values that start at `first`.
void decode_run(const std::uint8_t* bytes, std::size_t count, short_divisor divisor,
                std::size_t first, rcom_unit_record& record) {
    for (std::size_t i = 0; i < count; ++i)
        record.lane_values[first + i] = scaled_signed(bytes + 2 * i, 2, divisor);
}

/// Decodes a 16-bit field into a D value, and stores its multiple in the next D value.
void decode_with_multiple(const std::uint8_t* bytes, short_divisor divisor, double factor,
                          std::size_t d, rcom_unit_record& record) {
    record.lane_values[d] = scaled_signed(bytes, 2, divisor);
    record.lane_values[d + 1] = record.lane_values[d] * factor;
}

/// As above, but stores a thousandth of the value in the next D value.
void decode_with_thousandth(const std::uint8_t* bytes, short_divisor divisor, std::size_t d,
                            rcom_unit_record& record) {
    record.lane_values[d] = scaled_signed(bytes, 2, divisor);
    record.lane_values[d + 1] = record.lane_values[d] / 1000.0;
}

//  0   1   2     4   6   7   8     12             44        48  49  50     58          106    132
//  +---+---+-----+---+---+---+-----+--------------+---------+---+---+------+-----------+------+---+
//  | W | 1 | len | . | . | . | D0  | 16 x i16     | 4 x u8  | . | ch| data | 24 x i16  | 13 x | . |
//  |   |   | u16 |u16|u8 |u8 | i32 |              |         |u8 | u8|      |           | i16  |u8 |
//  +---+---+-----+---+---+---+-----+--------------+---------+---+---+------+-----------+------+---+
void decode_lane_packet(const std::uint8_t* frame, rcom_unit_record& record) {
    record.sync = frame[0];
    record.packet_type = frame[1];
    record.packet_length = read_unsigned(frame + 2, 2);
    record.lane_word_4 = read_unsigned(frame + 4, 2);
    record.lane_byte_6 = frame[6];
    record.lane_byte_7 = frame[7];
    record.lane_values[0] = scaled_signed(frame + 8, 4, -1000.0);
    decode_run(frame + 12, 1, -1000.0, 1, record);
    decode_with_multiple(frame + 14, -100.0, kmh_per_mps, 29, record);
    decode_with_thousandth(frame + 16, -10.0, 49, record);
    decode_run(frame + 18, 1, -1000.0, 2, record);
    decode_with_multiple(frame + 20, -100.0, kmh_per_mps, 31, record);
    decode_with_thousandth(frame + 22, -10.0, 51, record);
    decode_run(frame + 24, 8, -1000.0, 5, record);
    decode_run(frame + 40, 2, -1000.0, 3, record);
    record.lane_byte_44 = frame[44];
    record.lane_byte_45 = frame[45];
    record.lane_byte_46 = frame[46];
    record.lane_byte_47 = frame[47];
    record.lane_byte_48 = frame[48];
    record.lane_status_channel = frame[lane_byte::status_channel];
    decode_lane_status_channel(record.lane_status_channel, frame + lane_byte::status_data, record);
    for (std::size_t i = 0; i < 8; ++i)
        decode_with_multiple(frame + 58 + 2 * i, -100.0, kmh_per_mps, 33 + 2 * i, record);
    decode_run(frame + 74, 16, -1000.0, 13, record);
    decode_run(frame + 106, 11, 10000.0, 53, record);
    decode_run(frame + 128, 2, 100.0, 64, record);
    record.lane_byte_132 = frame[132];
}

} // namespace

bool rt_range_formatter_base::rcom_process_frame_lane_packet(const std::uint8_t* frame,
                                                             std::uint64_t received_size) {
    if (read_u16(frame + rcom_packet_length_byte) < smallest_stated_length) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, log::here(lane_function),
                   "Size of RCOM lane packet is less than %u.", unsigned{smallest_stated_length});
        return false;
    }
    if (!has_size(logger_, log::here(lane_function), "RCOM lane packet size", lane_packet_size,
                  received_size))
        return false;
    decode_lane_packet(frame, rcom_record_);
    return true;
}

} // namespace zel::toolbox::rt_range
