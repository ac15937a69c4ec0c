// Times to collision.
#pragma once

#include <limits>

namespace zel::toolbox::rt_range {

/// Stands for no time to collision: the smallest positive normal double.
inline constexpr double no_collision = std::numeric_limits<double>::min();

/// Times to collision along one axis.
struct collision_times {
    double steady;      ///< at constant range rate
    double accelerated; ///< with the acceleration; equal to `steady` for a small one
};

/// Both times for a range (m), its rate (m/s) and an acceleration (m/s²), which is ignored while
/// `scaled_acceleration`, its multiple by 3.6, is small. Both are `no_collision` for a small rate.
/// The accelerated time is the smaller solution that is not negative; if both are negative, the
/// smaller absolute value; if there is none, `no_collision`.
/// Deliberate: the accelerated time is computed from the negated range.
collision_times collision_times_of(double range, double rate, double acceleration,
                                   double scaled_acceleration);

} // namespace zel::toolbox::rt_range
