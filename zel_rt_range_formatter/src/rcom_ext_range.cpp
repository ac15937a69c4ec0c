#include <cmath>
#include <cstdint>

#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/rcom_ext_range_status_channels.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;

/// Smallest packet length that a sender may state, and the number of bytes that are read.
constexpr std::uint16_t smallest_stated_length = 61;
constexpr std::uint64_t ext_range_size = 65;

/// A packet with a longer longitudinal range (m) is implausible.
constexpr double largest_range = 1'000'000.0;

constexpr const char* ext_range_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_frame_ext_range";
constexpr const char* status_channel_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_frame_ext_range_status_channel";

// clang-format off
//  0   1   2     4   6   7   8      12     16    18    20       28       36    38    40  41   42
//  +---+---+-----+---+---+---+------+------+-----+-----+--------+--------+-----+-----+---+----+---
//  | W | 2 | len | . | n | . | lat  | long | dlat| dlon| hunter | target | hu  | ta  | . | ch | ..
//  |   |   | u16 |u16|u8 |u8 | i32  | i32  | i16 | i16 | 2 i32  | 2 i32  | u16 | u16 |u8 | u8 |
//  +---+---+-----+---+---+---+------+------+-----+-----+--------+--------+-----+-----+---+----+---
//  50         54         58   59   60   61   62    64
//  +----------+----------+----+----+----+----+-----+----+
//  | velocity | accel    | .  | .  | .  | .  | .   | .  |
//  | lon, lat | lat, lon | u8 | u8 | u8 | u8 | u16 | u8 |
//  +----------+----------+----+----+----+----+-----+----+
// clang-format on
//
// The eight bytes of the status channel are at 42 to 49. Lateral values change their sign.
void decode_ext_range(const std::uint8_t* frame, rcom_unit_record& record) {
    record.sync = frame[0];
    record.packet_type = frame[1];
    record.packet_length = read_unsigned(frame + 2, 2);
    record.ext_range_word_4 = read_unsigned(frame + 4, 2);
    record.target_number = frame[6];
    record.ext_range_byte_7 = frame[7];
    record.range_lateral = scaled_signed(frame + 8, 4, -1000.0);
    record.range_longitudinal = scaled_signed(frame + 12, 4, 1000.0);
    record.range_rate_lateral = scaled_signed(frame + 16, 2, -100.0);
    record.range_rate_longitudinal = scaled_signed(frame + 18, 2, 100.0);
    record.hunter_value_a = scaled_signed(frame + 20, 4, 1000.0);
    record.hunter_value_b = scaled_signed(frame + 24, 4, 1000.0);
    record.target_value_a = scaled_signed(frame + 28, 4, 1000.0);
    record.target_value_b = scaled_signed(frame + 32, 4, 1000.0);
    record.hunter_value_c = scaled_unsigned(frame + 36, 2, 100.0);
    record.target_value_c = scaled_unsigned(frame + 38, 2, 100.0);
    record.ext_range_byte_40 = frame[40];
    record.status_channel = frame[41];
    record.velocity_longitudinal = scaled_signed(frame + 50, 2, 100.0);
    record.velocity_longitudinal_kmh = record.velocity_longitudinal * kmh_per_mps;
    record.velocity_lateral = scaled_signed(frame + 52, 2, -100.0);
    // Deliberate: existing recordings contain the longitudinal velocity here.
    record.velocity_lateral_kmh = record.velocity_longitudinal * kmh_per_mps;
    record.acceleration_lateral = scaled_signed(frame + 54, 2, -100.0);
    record.acceleration_lateral_scaled = record.acceleration_lateral * kmh_per_mps;
    record.acceleration_longitudinal = scaled_signed(frame + 56, 2, 100.0);
    record.acceleration_longitudinal_scaled = record.acceleration_longitudinal * kmh_per_mps;
    record.ext_range_byte_58 = frame[58];
    record.ext_range_byte_59 = frame[59];
    record.ext_range_byte_60 = frame[60];
    record.ext_range_byte_61 = frame[61];
    record.ext_range_word_62 = read_u16(frame + 62);
    record.ext_range_byte_64 = frame[64];
}

} // namespace

bool rt_range_formatter_base::rcom_process_frame_ext_range(const std::uint8_t* frame,
                                                           std::uint64_t received_size) {
    if (read_u16(frame + rcom_packet_length_byte) < smallest_stated_length) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, log::here(ext_range_function),
                   "Size of RCOM extended range packet is less than %u.",
                   unsigned{smallest_stated_length});
        return false;
    }
    if (!has_size(logger_, log::here(ext_range_function), "RCOM extended range packet size",
                  ext_range_size, received_size))
        return false;
    // Deliberate: nothing of an implausible frame is stored, but it is still handled, with the
    // values of the previous frame.
    const double range = scaled_signed(frame + ext_range_byte::range_longitudinal, 4, 1000.0);
    if (std::abs(range) > largest_range)
        return true;
    decode_ext_range(frame, rcom_record_);
    rcom_process_frame_ext_range_status_channel(frame);
    return true;
}

void rt_range_formatter_base::rcom_process_frame_ext_range_status_channel(
    const std::uint8_t* frame) {
    const std::uint8_t channel = frame[ext_range_byte::status_channel];
    if (!decode_ext_range_status_channel(channel, frame + ext_range_byte::status_data,
                                         rcom_record_))
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(status_channel_function),
                   "Unknown status channel. status channel = %u.", unsigned{channel});
}

} // namespace zel::toolbox::rt_range
