#include "simulation/scenario.hpp"

#include <cmath>
#include <numbers>
#include <random>

namespace zel::simulation {
namespace {

using std::numbers::pi;

constexpr std::size_t most_targets = 4;
constexpr double lane_width = 3.5; // m

constexpr double radians(double degrees) {
    return degrees * pi / 180.0;
}

/// Uniform in [low, high). The distributions of the standard library differ between
/// implementations.
double uniform(std::mt19937_64& random, double low, double high) {
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

/// A vehicle on `road` with a slow oscillation of its own.
vehicle driving(std::mt19937_64& random, const track& road, double start, double speed,
                double lane) {
    return {
        .road = road,
        .start = start,
        .speed = speed,
        .wave_amplitude = uniform(random, 1.5, 3.0),
        .wave_frequency = uniform(random, 0.1, 0.3),
        .wave_phase = uniform(random, 0.0, 2.0 * pi),
        .lane = lane,
    };
}

/// Hard braking, then driving on, faster than before until the lost distance is made up for.
std::vector<transition> braking(double start, double lost_speed, double deceleration, double hold,
                                double recovery) {
    constexpr double extra_speed = 4.0;                      // m/s
    constexpr double settling = 6.0;                         // s
    const double duration = 2.0 * lost_speed / deceleration; // which is the largest
    const double recovery_start = start + duration + hold;
    const double low_time = recovery_start + recovery / 2.0 - (start + duration / 2.0);
    const double high_time = lost_speed * low_time / extra_speed;
    return {
        {start, duration, -lost_speed},
        {recovery_start, recovery, lost_speed + extra_speed},
        {recovery_start + recovery / 2.0 + high_time - settling / 2.0, settling, -extra_speed},
    };
}

std::vector<transition> later(std::vector<transition> transitions, double delay) {
    for (transition& each : transitions)
        each.start += delay;
    return transitions;
}

/// The gap to target 1 shrinks by the lost speed times the hunter's reaction time.
std::vector<vehicle> following(std::mt19937_64& random) {
    const pose start{0.0, 0.0, uniform(random, radians(-28.0), radians(-22.0))};
    const track road({.length = 6400.0, .bends = 8, .swing = 0.45}, start);
    const double speed = uniform(random, 20.0, 23.0); // m/s
    const double lost_speed = uniform(random, 10.0, 12.0);
    const double reaction_time = uniform(random, 1.2, 1.5); // s
    const double gap = uniform(random, 5.0, 7.0) + lost_speed * reaction_time;
    const std::vector<transition> brakes =
        braking(uniform(random, 9.0, 12.0), lost_speed, uniform(random, 7.0, 8.3),
                uniform(random, 1.0, 2.0), uniform(random, 8.0, 10.0));

    std::vector<vehicle> vehicles{driving(random, road, 0.0, speed, 0.0)};
    vehicle braker = vehicles[0];
    braker.start = gap;
    braker.lane = uniform(random, -0.3, 0.3);
    braker.speed_changes = brakes;
    vehicles[0].speed_changes = later(brakes, reaction_time);
    vehicles.push_back(braker);

    double place = gap + uniform(random, 18.0, 25.0);
    vehicle lane_changer = driving(random, road, place, speed, lane_width);
    lane_changer.lane_changes = {
        {uniform(random, 3.0, 6.0), uniform(random, 4.5, 5.5), -lane_width},
        {uniform(random, 33.0, 38.0), uniform(random, 4.5, 5.5), lane_width}};
    vehicles.push_back(lane_changer);
    for (const double lane : {0.0, -lane_width}) {
        place += uniform(random, 25.0, 35.0);
        vehicles.push_back(driving(random, road, place, speed, lane));
    }
    return vehicles;
}

/// The first encounter is on a straight, to which the hunter and the targets drive.
std::vector<vehicle> oncoming(std::mt19937_64& random) {
    constexpr track_shape triangle{.length = 6000.0, .bends = 3, .swing = 1.0 / 3.0};
    constexpr double straight = triangle.length / 6.0; // its middle
    const pose start{0.0, 0.0, uniform(random, radians(-5.0), radians(5.0))};
    const track road(triangle, start, straight - 200.0);
    const double oncoming_speed = uniform(random, 19.0, 21.0);
    std::vector<vehicle> vehicles{driving(random, road, 0.0, uniform(random, 19.0, 21.0), 0.0)};
    double place = uniform(random, 330.0, 430.0);
    for (std::size_t target = 1; target <= most_targets; ++target) {
        const double lane = -lane_width + uniform(random, -0.2, 0.2);
        vehicles.push_back(driving(random, road, place, -oncoming_speed, lane));
        place += uniform(random, 100.0, 160.0);
    }
    return vehicles;
}

/// All drive circles in the same time, so that each lap repeats the encounters. The circle of a
/// target starts on the hunter's, at right angles to it. Where the circles cut a second time, the
/// two are half a lap apart, as all drive clockwise.
std::vector<vehicle> crossing(std::mt19937_64& random) {
    constexpr double lap = 120.0;                      // s
    constexpr double frequency = 8.0 * 2.0 * pi / lap; // rad/s, of the oscillation
    constexpr double wave = 0.12 / frequency;          // s, so that speeds vary by 12 %
    const auto circle = [](double speed) {
        return track_shape{.length = lap * speed, .bends = 2, .swing = 0.0};
    };
    const auto at_speed = [&](const track& road, double speed) {
        return vehicle{.road = road,
                       .start = 0.0,
                       .speed = speed,
                       .wave_amplitude = wave * speed,
                       .wave_frequency = frequency,
                       .wave_phase = 0.0,
                       .lane = 0.0};
    };

    const double speed = uniform(random, 17.0, 22.0); // m/s
    const pose start{0.0, 0.0, uniform(random, radians(-30.0), radians(-10.0))};
    std::vector<vehicle> vehicles{at_speed(track(circle(speed), start), speed)};
    const vehicle hunter = vehicles[0];
    for (std::size_t target = 1; target <= most_targets; ++target) {
        const double time =
            8.0 + 6.0 * static_cast<double>(target - 1) + uniform(random, -1.0, 1.0);
        const vehicle_motion place = hunter.at(time);
        const double side = target % 2 == 0 ? -1.0 : 1.0;
        const double target_speed = uniform(random, 14.0, 20.0);
        const track road(circle(target_speed),
                         {place.north, place.east, place.heading + side * pi / 2.0});
        // The target drives like the hunter, but a little sooner or later.
        const double distance = uniform(random, 5.5, 7.5); // m
        const double delay = (random() % 2 == 0 ? -1.0 : 1.0) * distance *
                             std::hypot(speed, target_speed) / (speed * target_speed);
        vehicle crosser = at_speed(road, target_speed);
        crosser.wave_phase = -frequency * delay;
        crosser.start = -crosser.distance(time + delay);
        vehicles.push_back(crosser);
    }
    return vehicles;
}

std::vector<vehicle> vehicles_of(scenario_kind kind, std::mt19937_64& random) {
    switch (kind) {
    case scenario_kind::oncoming:
        return oncoming(random);
    case scenario_kind::crossing:
        return crossing(random);
    case scenario_kind::following:
        break;
    }
    return following(random);
}

} // namespace

scenario::scenario(std::uint64_t seed, std::size_t targets, scenario_kind kind) {
    std::mt19937_64 random(seed);
    vehicles_ = vehicles_of(kind, random);
    vehicles_.erase(vehicles_.begin() + 1 + static_cast<std::ptrdiff_t>(targets), vehicles_.end());
}

vehicle_motion scenario::unit(std::size_t unit, double time) const {
    return vehicles_[unit].at(time);
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
