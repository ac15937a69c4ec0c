#include "simulation/vehicle.hpp"

#include <cmath>
#include <numbers>

namespace zel::simulation {
namespace {

using std::numbers::pi;

/// A transition at one time: what has changed, with its integral, first and second derivative.
struct change {
    double integral;
    double value;
    double first;
    double second;
};

/// The first derivative is a raised cosine.
change change_at(const transition& each, double time) {
    const double x = (time - each.start) / each.duration;
    if (x <= 0.0)
        return {0.0, 0.0, 0.0, 0.0};
    if (x >= 1.0)
        return {each.height * each.duration * (x - 0.5), each.height, 0.0, 0.0};
    const double angle = 2.0 * pi * x;
    return {
        .integral =
            each.height * each.duration * (x * x / 2.0 + (std::cos(angle) - 1.0) / (4.0 * pi * pi)),
        .value = each.height * (x - std::sin(angle) / (2.0 * pi)),
        .first = each.height / each.duration * (1.0 - std::cos(angle)),
        .second = each.height / (each.duration * each.duration) * 2.0 * pi * std::sin(angle),
    };
}

double time_in_period(double time) {
    return time - vehicle::manoeuvre_period * std::floor(time / vehicle::manoeuvre_period);
}

} // namespace

vehicle::course vehicle::along(double time) const {
    const double phase = wave_frequency * time + wave_phase;
    const double wave_speed = wave_amplitude * wave_frequency;
    course result{
        .value = start + speed * time + wave_amplitude * std::sin(phase),
        .rate = speed + wave_speed * std::cos(phase),
        .acceleration = -wave_speed * wave_frequency * std::sin(phase),
    };
    for (const transition& each : speed_changes) {
        const change now = change_at(each, time_in_period(time));
        result.value += now.integral;
        result.rate += now.value;
        result.acceleration += now.first;
    }
    return result;
}

vehicle::course vehicle::across(double time) const {
    course result{lane, 0.0, 0.0};
    for (const transition& each : lane_changes) {
        const change now = change_at(each, time_in_period(time));
        result.value += now.value;
        result.rate += now.first;
        result.acceleration += now.second;
    }
    return result;
}

double vehicle::distance(double time) const {
    return along(time).value;
}

// In the axes of the track, along it and to its right, which turn while the vehicle moves on.
vehicle_motion vehicle::at(double time) const {
    const course s = along(time);
    const course d = across(time);
    const track_point point = road.at(s.value);

    const double turn = point.curvature * s.rate; // of the axes
    const double shrink = 1.0 - point.curvature * d.value;
    const double forward = s.rate * shrink;
    const double right = d.rate;
    const double forward_change =
        s.acceleration * shrink -
        s.rate * (point.curvature_slope * s.rate * d.value + point.curvature * d.rate);
    const double right_change = d.acceleration;
    const double acceleration_forward = forward_change - right * turn;
    const double acceleration_right = right_change + forward * turn;

    const double cosine = std::cos(point.heading);
    const double sine = std::sin(point.heading);
    return {
        .north = point.north - sine * d.value,
        .east = point.east + cosine * d.value,
        .velocity_north = cosine * forward - sine * right,
        .velocity_east = sine * forward + cosine * right,
        .acceleration_north = cosine * acceleration_forward - sine * acceleration_right,
        .acceleration_east = sine * acceleration_forward + cosine * acceleration_right,
        .heading = std::remainder(point.heading + std::atan2(right, forward), 2.0 * pi),
        .yaw_rate = turn + (forward * right_change - right * forward_change) /
                               (forward * forward + right * right),
    };
}

} // namespace zel::simulation
