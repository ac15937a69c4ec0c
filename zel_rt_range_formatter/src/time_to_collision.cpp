#include "zel_rt_range_formatter/src/time_to_collision.hpp"

#include <algorithm>
#include <cmath>

namespace zel::toolbox::rt_range {
namespace {

// Single-precision 0.1 and 0.05 widened to double; values are compared with exactly these numbers.
constexpr double smallest_rate = 0.10000000149011612;
constexpr double smallest_scaled_acceleration = 0.05000000074505806;

/// The smallest non-negative solution t (s) of 0.5 a t² + v t + d = 0 for a distance `d` (m), a
/// rate `v` (m/s) and an acceleration `a` (m/s²). If both solutions are negative, the smaller of
/// their absolute values; if there is none, `no_collision`.
double time_to_collision(double d, double v, double a) {
    if (a == 0.0) // Unreachable: the caller ignores small accelerations, including 0.
        return -(d / v);
    const double x = v * v - 2.0 * a * d;
    if (x < 0.0)
        return no_collision;
    if (x == 0.0)
        return -(v / a);
    const double r1 = (std::sqrt(x) + v) / a;
    const double r2 = (v - std::sqrt(x)) / a;
    if (-r1 >= 0.0 && -r2 < 0.0)
        return std::abs(r1);
    if (-r1 < 0.0 && -r2 >= 0.0)
        return std::abs(r2);
    return std::min(std::abs(r1), std::abs(r2));
}

} // namespace

collision_times collision_times_of(double range, double rate, double acceleration,
                                   double scaled_acceleration) {
    if (!(std::abs(rate) > smallest_rate))
        return {no_collision, no_collision};
    const double steady = -(range / rate);
    if (!(std::abs(scaled_acceleration) > smallest_scaled_acceleration))
        return {steady, steady};
    return {steady, time_to_collision(-range, rate, acceleration)};
}

} // namespace zel::toolbox::rt_range
