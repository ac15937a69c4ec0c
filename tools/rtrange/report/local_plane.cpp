#include "tools/rtrange/report/local_plane.hpp"

#include <cmath>
#include <limits>
#include <numbers>

namespace rtrange {
namespace {

constexpr double radians_per_degree = std::numbers::pi / 180.0;

bool is_position(double latitude, double longitude) {
    return std::abs(latitude) <= 90.0 && std::abs(longitude) <= 180.0 &&
           (latitude != 0.0 || longitude != 0.0);
}

} // namespace

local_plane::point local_plane::at(double latitude, double longitude) {
    if (!is_position(latitude, longitude)) {
        constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
        return {nowhere, nowhere};
    }
    if (!origin_)
        origin_ = touching(latitude, longitude);
    // Shortest way around the globe, also across the date line.
    const double to_the_east = std::remainder(longitude - origin_->longitude, 360.0);
    return {to_the_east * origin_->metres_per_degree_east,
            (latitude - origin_->latitude) * origin_->metres_per_degree_north};
}

local_plane::origin local_plane::touching(double latitude, double longitude) {
    // WGS 84
    constexpr double equatorial_radius = 6378137.0;
    constexpr double eccentricity_squared = 6.69437999014e-3;
    const double sine = std::sin(latitude * radians_per_degree);
    const double flattening = 1.0 - eccentricity_squared * sine * sine;
    const double radius_east = equatorial_radius / std::sqrt(flattening);
    const double radius_north = radius_east * (1.0 - eccentricity_squared) / flattening;
    return {latitude, longitude, radius_north * radians_per_degree,
            radius_east * std::cos(latitude * radians_per_degree) * radians_per_degree};
}

} // namespace rtrange
