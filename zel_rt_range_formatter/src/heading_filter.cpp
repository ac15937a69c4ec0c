#include "zel_rt_range_formatter/src/heading_filter.hpp"

#include <cmath>

namespace zel::toolbox::rt_range {
namespace {

constexpr double largest_step = 5.0;

/// Truncated toward zero; a negative number wraps around.
std::uint32_t whole_part(double heading) {
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(heading));
}

} // namespace

double heading_filter::filter(double heading) {
    if (seen_ == 0) {
        first_ = heading;
        seen_ = 1;
        return heading;
    }
    if (seen_ == 1) {
        seen_ = 2;
        return second(heading);
    }
    return later(heading);
}

double heading_filter::second(double heading) {
    const bool jump = heading - first_ > largest_step;
    whole_ = whole_part(jump ? first_ : heading);
    value_ = jump ? heading : first_;
    return value_;
}

double heading_filter::later(double heading) {
    const double step = std::abs(std::abs(heading) - std::abs(value_));
    if (step < largest_step && whole_part(heading) != whole_)
        value_ = heading;
    return value_;
}

} // namespace zel::toolbox::rt_range
