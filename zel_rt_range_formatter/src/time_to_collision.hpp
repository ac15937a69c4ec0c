// Times to collision.
#pragma once

#include <limits>

namespace zel::toolbox::rt_range {

/// Stands for no time to collision: the smallest positive normal double.
inline constexpr double no_collision = std::numeric_limits<double>::min();

/// The smallest non-negative time (s) after which a distance of `d` (m), a rate of `v` (m/s) and an
/// acceleration of `a` (m/s²) have become zero: 0.5 a t² + v t + d = 0. Where both solutions lie in
/// the past, the size of the nearer one.
double time_to_collision(double d, double v, double a);

/// Times to collision along one axis.
struct collision_times {
    double steady;      ///< at constant range rate
    double accelerated; ///< with the acceleration; the steady one where there is next to none
};

/// Both times for a range (m), its rate (m/s) and an acceleration (m/s²), which the decoder judges
/// by its multiple `scaled_acceleration`. Neither exists without a range rate to speak of.
collision_times collision_times_of(double range, double rate, double acceleration,
                                   double scaled_acceleration);

} // namespace zel::toolbox::rt_range
