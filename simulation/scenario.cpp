#include "simulation/scenario.hpp"

#include <cmath>
#include <numbers>
#include <random>

namespace zel::simulation {
namespace {

using std::numbers::pi;

constexpr double first_heading = 2.0 * pi / 180.0;

/// The track in its own axes: the lateral offset after `x` metres, and its first and second
/// derivatives.
struct track_point {
    double drift;
    double slope;
    double bend;
};

track_point track_at(double x) {
    constexpr double straight = 400.0; // m
    constexpr double entry = 1000.0;   // m, over which the slope rises
    constexpr double steepest = 0.3;   // slope
    constexpr double wave = 2000.0;    // m
    constexpr double depth = steepest / 4;

    if (x < straight)
        return {0.0, 0.0, 0.0};
    const double u = x - straight;
    if (u < entry) {
        const double phase = pi * u / entry;
        return {steepest / 2 * (u - entry / pi * std::sin(phase)),
                steepest / 2 * (1.0 - std::cos(phase)),
                steepest / 2 * pi / entry * std::sin(phase)};
    }
    const double w = u - entry;
    const double phase = 2 * pi * w / wave;
    return {steepest / 2 * entry + steepest * w - depth * (w - wave / (2 * pi) * std::sin(phase)),
            steepest - depth * (1.0 - std::cos(phase)), -depth * 2 * pi / wave * std::sin(phase)};
}

/// Uniform in [low, high). The distributions of the standard library differ between
/// implementations.
double uniform(std::mt19937_64& random, double low, double high) {
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

} // namespace

scenario::scenario(std::uint64_t seed, std::size_t targets) {
    std::mt19937_64 random(seed);
    const double speed = uniform(random, 20.0, 30.0);
    double start = 0.0;
    for (std::size_t unit = 0; unit <= targets; ++unit) {
        drives_.push_back({
            .start = start,
            .speed = speed,
            .wave_amplitude = uniform(random, 2.0, 8.0),
            .wave_frequency = uniform(random, 0.1, 0.4),
            .lateral_offset = unit == 0 ? 0.0 : uniform(random, -3.5, 3.5),
        });
        start += uniform(random, 22.0, 32.0);
    }
}

vehicle_motion scenario::unit(std::size_t unit, double time) const {
    const drive& along = drives_[unit];
    const double phase = along.wave_frequency * time;
    const double x = along.start + along.speed * time + along.wave_amplitude * std::sin(phase);
    const double vx = along.speed + along.wave_amplitude * along.wave_frequency * std::cos(phase);
    const double ax =
        -along.wave_amplitude * along.wave_frequency * along.wave_frequency * std::sin(phase);

    const track_point track = track_at(x);
    const double y = track.drift + along.lateral_offset;
    const double vy = track.slope * vx;
    const double ay = track.slope * ax + track.bend * vx * vx;

    const double c = std::cos(first_heading);
    const double s = std::sin(first_heading);
    return {
        .north = c * x - s * y,
        .east = s * x + c * y,
        .velocity_north = c * vx - s * vy,
        .velocity_east = s * vx + c * vy,
        .acceleration_north = c * ax - s * ay,
        .acceleration_east = s * ax + c * ay,
        .heading = first_heading + std::atan(track.slope),
        .yaw_rate = track.bend * vx / (1.0 + track.slope * track.slope),
    };
}

relative_motion scenario::target(std::size_t target, double time) const {
    const vehicle_motion hunter = unit(0, time);
    const vehicle_motion other = unit(target, time);
    const double c = std::cos(hunter.heading);
    const double s = std::sin(hunter.heading);
    const auto forward = [&](double north, double east) { return c * north + s * east; };
    const auto right = [&](double north, double east) { return c * east - s * north; };

    const double north = other.north - hunter.north;
    const double east = other.east - hunter.east;
    const double velocity_north = other.velocity_north - hunter.velocity_north;
    const double velocity_east = other.velocity_east - hunter.velocity_east;
    const double acceleration_north = other.acceleration_north - hunter.acceleration_north;
    const double acceleration_east = other.acceleration_east - hunter.acceleration_east;
    // The yaw rate of the hunter's axes contributes to the range rates.
    return {
        .range_longitudinal = forward(north, east),
        .range_lateral = right(north, east),
        .range_rate_longitudinal =
            forward(velocity_north, velocity_east) + hunter.yaw_rate * right(north, east),
        .range_rate_lateral =
            right(velocity_north, velocity_east) - hunter.yaw_rate * forward(north, east),
        .acceleration_longitudinal = forward(acceleration_north, acceleration_east),
        .acceleration_lateral = right(acceleration_north, acceleration_east),
    };
}

geographic_position scenario::geographic(const vehicle_motion& motion) {
    constexpr double earth_radius = 6371000.0; // m
    constexpr double first_latitude = 52.4 * pi / 180.0;
    constexpr double first_longitude = 10.8 * pi / 180.0;
    constexpr double altitude = 74.0;
    return {first_latitude + motion.north / earth_radius,
            first_longitude + motion.east / (earth_radius * std::cos(first_latitude)), altitude};
}

} // namespace zel::simulation
