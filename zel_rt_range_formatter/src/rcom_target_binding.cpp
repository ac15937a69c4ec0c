#include <cmath>
#include <cstdint>

#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/relative_values.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"
#include "zel_rt_range_formatter/src/time_to_collision.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;

constexpr const char* current_ncom_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_frame_ext_range_current_ncom";

/// Copies the RT-Range unit's position of the target. A pair of zeros stands for no fix.
void override_position(std::uint8_t channel, const rcom_unit_record& rcom,
                       ncom_unit_record& target) {
    constexpr std::uint8_t position_channel = 8;
    constexpr std::uint8_t altitude_channel = 10;
    if (channel == position_channel &&
        (rcom.target_latitude != 0.0 || rcom.target_longitude != 0.0)) {
        target.latitude = rcom.target_latitude;
        target.longitude = rcom.target_longitude;
    } else if (channel == altitude_channel &&
               (rcom.target_altitude != 0.0 || rcom.target_heading != 0.0)) {
        target.altitude = rcom.target_altitude;
        target.heading = rcom.target_heading;
    }
}

void copy_ranges(const rcom_unit_record& rcom, ncom_unit_record& record) {
    record.range_lateral = rcom.range_lateral;
    record.range_longitudinal = rcom.range_longitudinal;
    record.range_rate_lateral = rcom.range_rate_lateral;
    record.range_rate_longitudinal = rcom.range_rate_longitudinal;
}

void calculate_collision_times(const rcom_unit_record& rcom, ncom_unit_record& record) {
    const collision_times longitudinal =
        collision_times_of(rcom.range_longitudinal, rcom.range_rate_longitudinal,
                           rcom.acceleration_longitudinal, rcom.acceleration_longitudinal_scaled);
    record.ttc_longitudinal = longitudinal.steady;
    record.ttc_longitudinal_accelerated = longitudinal.accelerated;
    const collision_times lateral =
        collision_times_of(rcom.range_lateral, rcom.range_rate_lateral, rcom.acceleration_lateral,
                           rcom.acceleration_lateral_scaled);
    record.ttc_lateral = lateral.steady;
    record.ttc_lateral_accelerated = lateral.accelerated;
}

void write_unit_values(double a, double b, double c, ncom_unit_record& record) {
    record.unit_value_a = a;
    record.unit_value_b = b;
    record.unit_value_c = c;
    record.unit_value_ab = std::sqrt(a * a + b * b);
    record.unit_value_c_negated = -c;
}

} // namespace

std::uint32_t
rt_range_formatter_base::rcom_process_frame_ext_range_current_ncom(const std::uint8_t* frame) {
    const std::uint32_t unit = frame[ext_range_byte::target_number];
    if (unit >= unit_count) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, log::here(current_ncom_function),
                   "Invalid RCOM Target Number.");
        return no_unit;
    }
    // If the frame is implausible, its target number, channel number and addresses still count, and
    // the record holds the values of an earlier frame.
    const std::uint8_t channel = frame[ext_range_byte::status_channel];
    const bool is_target = unit != hunter;
    ncom_unit_record& record = units_[unit].record;
    if (is_target)
        override_position(channel, rcom_record_, record);
    copy_ranges(rcom_record_, record);
    calculate_collision_times(rcom_record_, record);
    record.rcom_channel_17_a = rcom_record_.channel_17_a;
    record.rcom_channel_17_b = rcom_record_.channel_17_b;
    record.rcom_channel_17_c = rcom_record_.channel_17_c;
    record.rcom_channel_value =
        is_target ? rcom_record_.channel_0_scaled : rcom_record_.channel_5_scaled;
    if (is_target) {
        write_unit_values(rcom_record_.target_value_a, rcom_record_.target_value_b,
                          rcom_record_.target_value_c, record);
        write_unit_values(rcom_record_.hunter_value_a, rcom_record_.hunter_value_b,
                          rcom_record_.hunter_value_c, hunter_record());
    }
    if (channel == address_channel)
        identify(frame + ext_range_byte::status_data, unit);
    calculate_relative_values(record, hunter_record());
    return unit;
}

/// Learns the addresses of status channel 9: the hunter's, then that of the current target.
void rt_range_formatter_base::identify(const std::uint8_t* addresses, std::uint32_t unit) {
    if (addresses_.learn_hunter(read_unsigned(addresses, 4)))
        log::write(logger_, ZEL_LOG_LEVEL_NOTABLE, log::here(current_ncom_function),
                   "Successfully identified IP for hunter(%u.%u.%u.%u).", unsigned{addresses[0]},
                   unsigned{addresses[1]}, unsigned{addresses[2]}, unsigned{addresses[3]});
    const std::uint8_t* const target_address = addresses + 4;
    if (unit != hunter && addresses_.learn_target(unit, read_unsigned(target_address, 4)))
        log::write(logger_, ZEL_LOG_LEVEL_NOTABLE, log::here(current_ncom_function),
                   "Successfully identified IP for target %lu (%u.%u.%u.%u).",
                   static_cast<unsigned long>(unit), unsigned{target_address[0]},
                   unsigned{target_address[1]}, unsigned{target_address[2]},
                   unsigned{target_address[3]});
}

} // namespace zel::toolbox::rt_range
