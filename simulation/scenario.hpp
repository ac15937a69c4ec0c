// The motion of all vehicles in a simulated run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulation/vehicle.hpp"

namespace zel::simulation {

/// What happens in a run. Everything happens first in the first 30 s and comes again, however long
/// the run is.
enum class scenario_kind : std::uint8_t {
    /// The hunter follows on a bending track, on which its heading crosses north again and again.
    /// Target 1 brakes hard, and the hunter brakes late (a near miss); target 2 changes to the
    /// hunter's lane and back; targets 3 and 4 keep their places. Repeated every minute.
    following,
    /// The targets come towards the hunter in the lane to its left, one after the other, and pass
    /// it. They meet again on each lap, after 143 to 158 s.
    oncoming,
    /// The targets cross the hunter's path at right angles, one after the other, a few metres
    /// before or behind it, alternately from the left and from the right. They cross again on each
    /// lap, after 120 s.
    crossing,
};

/// Names of the kinds, in their order.
inline constexpr std::array<const char*, 3> scenario_names{"following", "oncoming", "crossing"};

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

/// A hunter and up to four targets. The seed determines gaps, speeds, times and decelerations.
class scenario {
public:
    /// A hunter and 1 to 4 targets.
    scenario(std::uint64_t seed, std::size_t targets,
             scenario_kind kind = scenario_kind::following);

    /// Motion of a unit: 0 is the hunter. The time is in seconds from the start.
    vehicle_motion unit(std::size_t unit, double time) const;
    relative_motion target(std::size_t target, double time) const;

    /// The hunter starts near 52.4 degrees north, 10.8 degrees east.
    static geographic_position geographic(const vehicle_motion& motion);

private:
    std::vector<vehicle> vehicles_;
};

} // namespace zel::simulation
