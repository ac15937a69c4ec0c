#include <cstdint>

#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/ncom_status_channels.hpp"
#include "zel_rt_range_formatter/src/relative_values.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

namespace zel::toolbox::rt_range {
namespace {

void update_absolute_time(unit_state& unit) {
    // 1980-01-06 00:00:00 in milliseconds since 1970, less one second. Deliberate: existing
    // recordings contain this time.
    constexpr std::int64_t gps_epoch_ms = 315964799000;
    constexpr std::int64_t ms_per_minute = 60000;
    constexpr std::int64_t us_per_ms = 1000;

    ncom_unit_record& record = unit.record;
    record.gps_time_valid = record.utc_offset_valid;
    if (record.utc_offset_valid == 0)
        return;
    const std::int64_t ms = gps_epoch_ms + std::int64_t{unit.ncom_last_time_ms} +
                            std::int64_t{record.gps_minutes} * ms_per_minute;
    record.utc_time_us = static_cast<std::uint64_t>(ms * us_per_ms);
}

} // namespace

// clang-format off
//  0    1      3         12     21   22   23    31    39    43         52   55   58   61   62   63
//  +----+------+---------+------+----+----+-----+-----+-----+----------+----+----+----+----+----+--
//  | E7 | time | accel   | rate | nav| sum| lat | lon | alt | velocity | hdg| pit| rol| sum| ch |
//  |    | u16  | 3 x s24 | x3   | u8 | u8 | f64 | f64 | f32 | 3 x s24  | s24| s24| s24| u8 | u8 |
//  +----+------+---------+------+----+----+-----+-----+-----+----------+----+----+----+----+----+--
// clang-format on
//
// The eight bytes of the status channel follow at 63, a third checksum at 71. No checksum is
// verified.
void rt_range_formatter_base::process_ncom(const std::uint8_t* ncom, std::uint32_t unit,
                                           package_output& output) {
    unit_state& state = units_[unit];
    ncom_unit_record& record = state.record;
    record.navigation_status = ncom[ncom_byte::navigation_status];
    record.sync = ncom[0];
    record.checksum_1 = ncom[ncom_byte::checksum_1];
    record.checksum_2 = ncom[ncom_byte::checksum_2];
    record.checksum_3 = ncom[ncom_byte::checksum_3];
    decode_time_and_motion(ncom, state);
    decode_position_and_orientation(ncom, record);
    // Deliberate: the channel number is stored in the hunter's record, whichever unit sent it.
    hunter_record().ncom_status_channel = ncom[ncom_byte::status_channel];
    decode_ncom_status_channel(ncom[ncom_byte::status_channel], ncom + ncom_byte::status_data,
                               record);
    convert_frame(record, hunter_record());
    buffer_ncom_samples(record, output);
    // Last, so that a sample batch carries the absolute time of the previous packet.
    update_absolute_time(state);
}

void rt_range_formatter_base::decode_time_and_motion(const std::uint8_t* ncom, unit_state& unit) {
    constexpr short_divisor accel_scale = 10000.0; // 0.1 mm/s²
    constexpr short_divisor rate_scale = 100000.0; // 0.01 mrad/s

    ncom_unit_record& record = unit.record;
    const std::uint32_t time = read_unsigned(ncom + ncom_byte::time, 2);
    if (unit.ncom_last_time_ms > time) // a new minute
        record.gps_minutes =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(record.gps_minutes) + 1);
    unit.ncom_last_time_ms = time;
    record.time_in_minute_ms = time;

    const std::uint8_t* const accel = ncom + ncom_byte::accelerations;
    record.accel_x = scaled_signed(accel, 3, accel_scale);
    record.accel_y = scaled_signed(accel + 3, 3, accel_scale);
    record.accel_z = scaled_signed(accel + 6, 3, accel_scale);

    const std::uint8_t* const rate = ncom + ncom_byte::rates;
    record.rate_x = to_degrees(scaled_signed(rate, 3, rate_scale));
    record.rate_y = to_degrees(scaled_signed(rate + 3, 3, rate_scale));
    record.rate_z = to_degrees(scaled_signed(rate + 6, 3, rate_scale));
    record.rate_x_copy = record.rate_x;
    record.rate_y_copy = record.rate_y;
    record.rate_z_copy = record.rate_z;
}

void rt_range_formatter_base::decode_position_and_orientation(const std::uint8_t* ncom,
                                                              ncom_unit_record& record) {
    constexpr short_divisor velocity_scale = 10000.0; // 0.1 mm/s
    constexpr short_divisor angle_scale = 1000000.0;  // 1 µrad

    record.latitude = to_degrees(read_float(ncom + ncom_byte::latitude, 8));
    record.longitude = to_degrees(read_float(ncom + ncom_byte::longitude, 8));
    record.altitude = read_float(ncom + ncom_byte::altitude, 4);

    const std::uint8_t* const velocity = ncom + ncom_byte::velocities;
    record.velocity_north = scaled_signed(velocity, 3, velocity_scale);
    record.velocity_east = scaled_signed(velocity + 3, 3, velocity_scale);
    record.velocity_down = scaled_signed(velocity + 6, 3, velocity_scale);

    const double heading = to_degrees(scaled_signed(ncom + ncom_byte::heading, 3, angle_scale));
    record.heading = heading_filter_.filter(heading);
    record.pitch = to_degrees(scaled_signed(ncom + ncom_byte::pitch, 3, angle_scale));
    record.roll = to_degrees(scaled_signed(ncom + ncom_byte::roll, 3, angle_scale));
}

void rt_range_formatter_base::buffer_ncom_samples(const ncom_unit_record& record,
                                                  package_output& output) {
    if (sample_batch_.add(record))
        emit_ncom_sample_batch(output);
}

/// Adds one package per sample, all of them under the unit that completed the batch.
void rt_range_formatter_base::emit_ncom_sample_batch(package_output& output) {
    ncom_unit_record& record = units_[current_unit_index_].record;
    for (const sample_row& samples : sample_batch_.filtered()) {
        write_samples(samples, record);
        output.add_ncom(record, current_unit_index_);
    }
}

} // namespace zel::toolbox::rt_range
