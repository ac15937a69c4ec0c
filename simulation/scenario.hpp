// The motion of the vehicles in a simulated run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zel::simulation {

/// Position, velocity, acceleration and heading of one vehicle at one time, consistent with each
/// other.
struct vehicle_motion {
    double north; ///< m from the start of the track
    double east;
    double velocity_north; ///< m/s
    double velocity_east;
    double acceleration_north; ///< m/s²
    double acceleration_east;
    double heading;  ///< rad
    double yaw_rate; ///< rad/s
};

/// Motion of a target relative to the hunter, in the hunter's axes, lateral to the right.
struct relative_motion {
    double range_longitudinal; ///< m
    double range_lateral;
    double range_rate_longitudinal; ///< m/s, the derivatives of the ranges
    double range_rate_lateral;
    double acceleration_longitudinal; ///< m/s², of the target relative to the hunter
    double acceleration_lateral;
};

/// Geographic position of a vehicle.
struct geographic_position {
    double latitude;  ///< rad
    double longitude; ///< rad
    double altitude;  ///< m
};

/// A hunter that follows up to four targets along a track that is straight at first and then bends
/// gently. The seed determines gaps and speeds.
///
/// The decoder's heading filter passes all headings: the vehicles start at two degrees, only turn
/// away from north, and their headings never differ by five degrees.
class scenario {
public:
    /// A hunter and 1 to 4 targets.
    scenario(std::uint64_t seed, std::size_t targets);

    /// Motion of a unit: 0 is the hunter. The time is in seconds from the start.
    vehicle_motion unit(std::size_t unit, double time) const;
    relative_motion target(std::size_t target, double time) const;

    /// The track starts at 52.4 degrees north, 10.8 degrees east.
    static geographic_position geographic(const vehicle_motion& motion);

private:
    /// Motion along the track's axis: a constant speed plus a slow oscillation.
    struct drive {
        double start;
        double speed;
        double wave_amplitude; ///< m
        double wave_frequency; ///< rad/s
        double lateral_offset; ///< m, to the east of the track's axis
    };

    std::vector<drive> drives_;
};

} // namespace zel::simulation
