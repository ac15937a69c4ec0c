#include "zel_rt_range_formatter/src/relative_values.hpp"

#include <cmath>
#include <cstdint>
#include <limits>

#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/matrix.hpp"

namespace zel::toolbox::rt_range {
namespace {

/// A velocity accuracy of this age or more is outdated.
constexpr std::uint8_t outdated_age = 150;

void level_accelerations(ncom_unit_record& record) {
    const double pitch = to_radians(record.pitch);
    const double roll = to_radians(record.roll);
    const double sin_p = std::sin(pitch);
    const double cos_p = std::cos(pitch);
    const double sin_r = std::sin(roll);
    const double cos_r = std::cos(roll);
    const matrix3 levelling{{{cos_p, sin_r * sin_p, cos_r * sin_p},
                             {0.0, cos_r, -sin_r},
                             {-sin_p, sin_r * cos_p, cos_r * cos_p}}};
    const vector3 level = product(levelling, {record.accel_x, record.accel_y, record.accel_z});
    record.level_accel_x = level[0];
    record.level_accel_y = level[1];
    record.level_accel_z = level[2];
}

void vehicle_velocities(ncom_unit_record& record) {
    const double heading = to_radians(record.heading);
    const double sin_h = std::sin(heading);
    const double cos_h = std::cos(heading);
    const matrix3 rotation{{{cos_h, -sin_h, 0.0}, {sin_h, cos_h, 0.0}, {0.0, 0.0, 1.0}}};
    const vector3 velocity = transposed_product(
        rotation, {record.velocity_north, record.velocity_east, record.velocity_down});
    record.vehicle_velocity_x = velocity[0];
    record.vehicle_velocity_y = velocity[1];
    record.velocity_down = velocity[2];
}

/// From the unit's forward-right-down axes to forward-left-up. Deliberate: the unused velocity
/// slot changes its sign with every packet.
void convert_axes(ncom_unit_record& record) {
    record.level_accel_y = -record.level_accel_y;
    record.level_accel_z = -record.level_accel_z;
    record.accel_y = -record.accel_y;
    record.accel_z = -record.accel_z;
    record.rate_y = -record.rate_y;
    record.rate_z = -record.rate_z;
    record.vehicle_velocity_y = -record.vehicle_velocity_y;
    record.velocity_east = -record.velocity_east;
    record.vehicle_velocity_unused = -record.vehicle_velocity_unused;
    record.velocity_down = -record.velocity_down;
    record.pitch = -record.pitch;
}

void convert_to_kmh(ncom_unit_record& record) {
    record.vehicle_velocity_x_kmh = record.vehicle_velocity_x * kmh_per_mps;
    record.velocity_north_kmh = record.velocity_north * kmh_per_mps;
    record.vehicle_velocity_y_kmh = record.vehicle_velocity_y * kmh_per_mps;
    record.vehicle_velocity_unused_kmh = record.vehicle_velocity_unused * kmh_per_mps;
    record.velocity_east_kmh = record.velocity_east * kmh_per_mps;
    record.velocity_down_kmh = record.velocity_down * kmh_per_mps;
}

double root_of_squares(double x, double y) {
    return std::sqrt(x * x + y * y);
}

/// Yaw rate over speed (1/m); 0 unless the speed exceeds its own accuracy.
double curvature(const ncom_unit_record& record) {
    const double speed = root_of_squares(record.velocity_east, record.velocity_north);
    const double limit =
        record.velocity_accuracy_age < outdated_age
            ? root_of_squares(record.velocity_accuracy_east, record.velocity_accuracy_north)
            : std::numeric_limits<double>::max();
    return speed > limit ? to_radians(record.rate_z) / speed : 0.0;
}

double from_zero_to_360(double angle) {
    return angle >= 0.0 ? angle : angle + 360.0;
}

double wrapped_to_180(double difference) {
    if (difference > 180.0)
        return difference - 360.0;
    if (difference < -180.0)
        return difference + 360.0;
    return difference;
}

} // namespace

void convert_frame(ncom_unit_record& record, const ncom_unit_record& hunter) {
    level_accelerations(record);
    vehicle_velocities(record);
    convert_axes(record);
    convert_to_kmh(record);
    calculate_relative_values(record, hunter);
    record.curvature = curvature(record);
}

void calculate_relative_values(ncom_unit_record& record, const ncom_unit_record& hunter) {
    record.relative_range_longitudinal = record.range_longitudinal;
    record.relative_range_lateral = record.range_lateral;
    record.relative_range_rate_longitudinal = record.range_rate_longitudinal;
    record.relative_range_rate_longitudinal_kmh = record.range_rate_longitudinal * kmh_per_mps;
    record.relative_range_rate_lateral = record.range_rate_lateral;
    record.relative_range_rate_lateral_kmh = record.range_rate_lateral * kmh_per_mps;

    record.relative_accel_x = record.accel_x - hunter.accel_x;
    record.relative_accel_y = record.accel_y - hunter.accel_y;
    record.relative_accel_z = record.accel_z - hunter.accel_z;

    // Deliberate: angles are hunter minus unit, all other differences unit minus hunter, and the
    // roll is not wrapped.
    record.relative_heading =
        wrapped_to_180(from_zero_to_360(hunter.heading) - from_zero_to_360(record.heading));
    record.relative_pitch =
        wrapped_to_180(from_zero_to_360(hunter.pitch) - from_zero_to_360(record.pitch));
    record.relative_roll = from_zero_to_360(hunter.roll) - from_zero_to_360(record.roll);

    record.relative_rate_x = record.rate_x - hunter.rate_x;
    record.relative_rate_y = record.rate_y - hunter.rate_y;
    record.relative_rate_z = record.rate_z - hunter.rate_z;
}

} // namespace zel::toolbox::rt_range
