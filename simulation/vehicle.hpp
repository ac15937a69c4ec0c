// The motion of one vehicle on a track.
#pragma once

#include <vector>

#include "simulation/track.hpp"

namespace zel::simulation {

/// Position, velocity, acceleration and heading of a vehicle at one time, consistent with each
/// other: each is the derivative of the one before it, and the vehicle heads where it drives.
struct vehicle_motion {
    double north; ///< m from the hunter's first position
    double east;
    double velocity_north; ///< m/s
    double velocity_east;
    double acceleration_north; ///< m/s²
    double acceleration_east;
    double heading;  ///< rad, clockwise from north, -pi to pi
    double yaw_rate; ///< rad/s, the heading's derivative
};

/// A smooth change of a quantity by `height`.
struct transition {
    double start;    ///< s
    double duration; ///< s
    double height;
};

/// A vehicle that drives along a track with a speed that oscillates slowly, and repeats its
/// manoeuvres.
struct vehicle {
    /// After this time (s), the manoeuvres begin again.
    static constexpr double manoeuvre_period = 60.0;

    track road;
    double start;          ///< m along the track
    double speed;          ///< m/s along the track, negative against its direction
    double wave_amplitude; ///< m
    double wave_frequency; ///< rad/s
    double wave_phase;     ///< rad
    double lane;           ///< m to the right of the track, seen in the track's direction

    /// Manoeuvres of one period. Changes of the speed (m/s) must cancel out in speed and distance,
    /// changes of the lane (m) in their sum.
    std::vector<transition> speed_changes{};
    std::vector<transition> lane_changes{};

    /// Distance along the track at a time (s).
    double distance(double time) const;

    vehicle_motion at(double time) const;

private:
    /// A quantity with its first and second derivative by time.
    struct course {
        double value;
        double rate;
        double acceleration;
    };

    course along(double time) const;
    course across(double time) const;
};

} // namespace zel::simulation
