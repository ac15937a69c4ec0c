// Times to collision.
#pragma once

#include <limits>

namespace zel::toolbox::rt_range {

/// Stands for no time to collision: the smallest positive normal double.
inline constexpr double no_collision = std::numeric_limits<double>::min();

/// The smallest non-negative solution t (s) of 0.5 a t² + v t + d = 0 for a distance `d` (m), a
/// rate `v` (m/s) and an acceleration `a` (m/s²). If both solutions are negative, the smaller of
/// their absolute values; if there is none, `no_collision`.
double time_to_collision(double d, double v, double a);

/// Times to collision along one axis.
struct collision_times {
    double steady;      ///< at constant range rate
    double accelerated; ///< with the acceleration; equal to `steady` for a small one
};

/// Both times for a range (m), its rate (m/s) and an acceleration (m/s²), which is ignored while
/// `scaled_acceleration`, its multiple by 3.6, is small. Both are `no_collision` for a small rate.
/// Deliberate: the accelerated time is computed from the negated range.
collision_times collision_times_of(double range, double rate, double acceleration,
                                   double scaled_acceleration);

} // namespace zel::toolbox::rt_range
