// A simulated run, decoded: what comes out is what the vehicles did, to the resolution of the wire.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <span>

#include "simulation/simulated_traffic.hpp"
#include "simulation/status_data.hpp"
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

using namespace zel::simulation;

constexpr double full_turn = 2.0 * std::numbers::pi;

constexpr double true_degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

/// Half of the last decimal that the wire carries, and a little for the arithmetic.
constexpr double half_of(double resolution) {
    return resolution * 0.5000001;
}

/// The difference of two angles, -pi to pi.
double angle_between(double first, double second) {
    return std::remainder(second - first, full_turn);
}

struct body_axes {
    double forward;
    double right;
};

body_axes in_body_axes(double north, double east, double heading) {
    return {std::cos(heading) * north + std::sin(heading) * east,
            std::cos(heading) * east - std::sin(heading) * north};
}

body_axes acceleration_of(const vehicle_motion& motion) {
    return in_body_axes(motion.acceleration_north, motion.acceleration_east, motion.heading);
}

/// All but the heading and the body's velocities, which the decoder filters.
void expect_motion(const package& package, const vehicle_motion& truth) {
    const geographic_position position = scenario::geographic(truth);
    EXPECT_NEAR(package.f64(unit + 120), degrees(position.latitude), 1e-12);
    EXPECT_NEAR(package.f64(unit + 128), degrees(position.longitude), 1e-12);
    EXPECT_NEAR(package.f64(unit + 136), position.altitude, 1e-5);
    EXPECT_NEAR(package.f64(unit + 192), truth.velocity_north, half_of(1e-4));
    EXPECT_NEAR(package.f64(unit + 208), -truth.velocity_east, half_of(1e-4));
    const body_axes acceleration = acceleration_of(truth);
    EXPECT_NEAR(package.f64(unit + 24), acceleration.forward, half_of(1e-4));
    EXPECT_NEAR(package.f64(unit + 32), -acceleration.right, half_of(1e-4));
    EXPECT_NEAR(package.f64(unit + 88), -degrees(truth.yaw_rate), half_of(degrees(1e-5)));
}

void expect_ranges(const package& package, const relative_motion& truth) {
    EXPECT_NEAR(package.f64(unit + 572), truth.range_longitudinal, half_of(1e-3));
    EXPECT_NEAR(package.f64(unit + 564), -truth.range_lateral, half_of(1e-3));
    EXPECT_NEAR(package.f64(unit + 588), truth.range_rate_longitudinal, half_of(1e-2));
    EXPECT_NEAR(package.f64(unit + 580), -truth.range_rate_lateral, half_of(1e-2));
}

/// What the record holds filtered, or not at all, on the wire: the heading, and the position mode.
void expect_on_the_wire(std::span<const std::uint8_t> ncom, const package& package,
                        std::size_t number, const vehicle_motion& truth, double time) {
    const std::int32_t heading =
        static_cast<std::int32_t>(std::uint32_t{ncom[52]} << 8 | std::uint32_t{ncom[53]} << 16 |
                                  std::uint32_t{ncom[54]} << 24) >>
        8;
    const bool initialising = ncom[21] == 3;
    EXPECT_EQ(initialising, number == 0 && time < 0.1);
    EXPECT_NEAR(heading, initialising ? 0.0 : truth.heading * 1e6, half_of(1.0));
    const satellite_fix fix = satellite_fix_of(number, time);
    const std::uint8_t channel = ncom[62];
    if (channel == 0) {
        EXPECT_EQ(package.u8(unit + 765), fix.satellites);
        EXPECT_EQ(ncom[63 + 5], fix.position_mode);
    } else if (channel == 3) {
        EXPECT_NEAR(package.f64(unit + 451), fix.position_accuracy, half_of(1e-3));
        EXPECT_NEAR(package.f64(unit + 459), fix.position_accuracy, half_of(1e-3));
    } else if (channel == 20) {
        EXPECT_NEAR(std::uint32_t{ncom[63]} | std::uint32_t{ncom[64]} << 8,
                    fix.differential_age * 100.0, half_of(1.0));
    }
}

/// Two status channels replace what NCOM said by what the RT-Range unit says.
void expect_range_packet(const package& rcom, const package& target, const scenario& scenario,
                         std::size_t number, double time) {
    expect_ranges(target, scenario.target(number, time));
    const vehicle_motion truth = scenario.unit(number, time);
    const geographic_position position = scenario::geographic(truth);
    const std::uint8_t channel = rcom.u8(331);
    if (time == 0)
        return; // the target's own NCOM has not come yet
    if (channel == 8) {
        EXPECT_NEAR(target.f64(unit + 120), true_degrees(position.latitude), half_of(1e-7));
        EXPECT_NEAR(target.f64(unit + 128), true_degrees(position.longitude), half_of(1e-7));
        return;
    }
    expect_motion(target, truth);
    if (channel == 10) {
        const double heading = target.f64(unit + 240);
        EXPECT_TRUE(heading >= 0.0 && heading < 360.0) << heading;
        EXPECT_NEAR(std::remainder(heading - true_degrees(truth.heading), 360.0), 0.0,
                    half_of(1e-7));
    }
}

void expect_decoded_run(const traffic_options& options) {
    const scenario scenario(options.seed, options.targets, options.scenario);
    const std::uint64_t ticks = tick_count(options);
    instance plugin(ethernet_formatter());
    // By the packet type, which RCOM has at this place; NCOM has no such port.
    enum { ncom, lane, ext_range, wrapped };
    std::array<std::size_t, 4> targets_packets{};
    std::size_t hunter_packets = 0;
    const auto check = [&](double time, std::span<const std::uint8_t> frame) {
        const std::size_t type = frame[37] == (3003 & 0xFF) ? frame[43] : std::size_t{ncom};
        const outcome result = plugin.decode(bytes(frame.begin(), frame.end()),
                                             static_cast<std::uint64_t>(time * 1e9));
        const auto packages = result.decoded();
        if (packages.empty())
            return;
        const package& last = packages.back();
        const auto number =
            static_cast<std::size_t>(std::ranges::find(unit_tags, last.u32(0)) - unit_tags.begin());
        ++(number == 0 ? hunter_packets : targets_packets.at(type));
        EXPECT_EQ(number == 5, type == lane); // the RCOM record alone
        if (type == lane)
            return;
        const vehicle_motion truth = scenario.unit(number, time);
        if (type == ext_range)
            expect_range_packet(packages[0], last, scenario, number, time);
        else
            expect_motion(last, truth);
        if (type == ncom)
            expect_on_the_wire(frame.subspan(42), last, number, truth, time);
    };
    for (std::uint64_t tick = 0; tick < ticks && !testing::Test::HasFailure(); ++tick)
        send_tick(options, scenario, tick, [&](auto, std::span<const std::uint8_t> frame) {
            check(tick_time(options, tick), frame);
        });
    const std::size_t targets = options.targets;
    EXPECT_EQ(hunter_packets, ticks);
    EXPECT_EQ(targets_packets[ncom] + targets_packets[wrapped], targets * (ticks - 1));
    EXPECT_EQ(targets_packets[wrapped], targets * (ticks / options.wrapped_every - 1));
    EXPECT_EQ(targets_packets[ext_range], targets * ticks);
    EXPECT_EQ(targets_packets[lane], ticks / 5);
}

TEST(simulated_run, decodes_into_what_the_vehicles_did) {
    for (std::size_t kind = 0; kind < scenario_names.size(); ++kind)
        for (const std::size_t targets : {1U, 2U, 4U}) {
            SCOPED_TRACE(std::string(scenario_names[kind]) + " " + std::to_string(targets));
            traffic_options options;
            options.scenario = static_cast<scenario_kind>(kind);
            options.duration_s = 90;
            options.rate_hz = 20;
            options.targets = targets;
            options.seed = targets;
            expect_decoded_run(options);
        }
}

/// Calls `check` with some runs of a kind.
void for_some_seeds(scenario_kind kind, const std::function<void(const scenario&)>& check) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(std::string(scenario_names.at(static_cast<std::size_t>(kind))) + ", seed " +
                     std::to_string(seed));
        check(scenario(seed, 4, kind));
    }
}

/// Three minutes from the start, and some time after some hours, which fall on all parts of the
/// manoeuvres.
std::vector<double> times_of_a_long_run() {
    std::vector<double> times;
    for (double time = 0.0; time < 180.0; time += 0.37)
        times.push_back(time);
    for (double time = 80000.0; time < 80060.0; time += 1.7)
        times.push_back(time);
    return times;
}

void expect_derivatives(const scenario& scenario, std::size_t number, double time) {
    constexpr double step = 1.0 / 8192;
    const auto slope = [&](auto member) {
        return (scenario.unit(number, time + step).*member -
                scenario.unit(number, time - step).*member) /
               (2 * step);
    };
    const vehicle_motion now = scenario.unit(number, time);
    EXPECT_NEAR(now.velocity_north, slope(&vehicle_motion::north), 1e-4);
    EXPECT_NEAR(now.velocity_east, slope(&vehicle_motion::east), 1e-4);
    EXPECT_NEAR(now.acceleration_north, slope(&vehicle_motion::velocity_north), 1e-4);
    EXPECT_NEAR(now.acceleration_east, slope(&vehicle_motion::velocity_east), 1e-4);
    const double turned = angle_between(scenario.unit(number, time - step).heading,
                                        scenario.unit(number, time + step).heading);
    EXPECT_NEAR(now.yaw_rate, turned / (2 * step), 1e-4);
    EXPECT_LE(std::abs(now.heading), std::numbers::pi);
}

/// What a car can do, driving ahead.
void expect_plausible(const vehicle_motion& motion) {
    const body_axes velocity =
        in_body_axes(motion.velocity_north, motion.velocity_east, motion.heading);
    EXPECT_NEAR(velocity.right, 0.0, 1e-9);
    EXPECT_GT(velocity.forward, 5.0);
    EXPECT_LT(velocity.forward, 40.0);
    EXPECT_LT(std::abs(acceleration_of(motion).forward), 9.0);
    EXPECT_LT(std::abs(acceleration_of(motion).right), 4.0);
    EXPECT_LT(std::abs(true_degrees(motion.yaw_rate)), 25.0);
    EXPECT_LT(std::hypot(motion.north, motion.east), 5000.0);
}

/// The range rates are the ranges' derivatives, and the positions' distance is the range.
void expect_ranges_of_positions(const scenario& scenario, std::size_t number, double time) {
    constexpr double step = 1.0 / 8192;
    const relative_motion now = scenario.target(number, time);
    const relative_motion before = scenario.target(number, time - step);
    const relative_motion after = scenario.target(number, time + step);
    EXPECT_NEAR(now.range_rate_longitudinal,
                (after.range_longitudinal - before.range_longitudinal) / (2 * step), 1e-4);
    EXPECT_NEAR(now.range_rate_lateral, (after.range_lateral - before.range_lateral) / (2 * step),
                1e-4);
    const vehicle_motion hunter = scenario.unit(0, time);
    const vehicle_motion other = scenario.unit(number, time);
    const double north = other.north - hunter.north;
    const double east = other.east - hunter.east;
    const body_axes range = in_body_axes(north, east, hunter.heading);
    EXPECT_NEAR(now.range_longitudinal, range.forward, 1e-9);
    EXPECT_NEAR(now.range_lateral, range.right, 1e-9);
    EXPECT_GT(std::hypot(north, east), 3.0) << "a collision";
    // The wire carries 16 bits of centimetres per second.
    EXPECT_LT(std::abs(now.range_rate_longitudinal), 300.0);
    EXPECT_LT(std::abs(now.range_rate_lateral), 300.0);
}

TEST(simulated_run, the_truth_agrees_with_itself_and_with_what_cars_can_do) {
    for (const auto kind :
         {scenario_kind::following, scenario_kind::oncoming, scenario_kind::crossing})
        for_some_seeds(kind, [&](const scenario& scenario) {
            for (const double time : times_of_a_long_run()) {
                SCOPED_TRACE(time);
                for (std::size_t number = 0; number <= 4; ++number) {
                    expect_derivatives(scenario, number, time);
                    expect_plausible(scenario.unit(number, time));
                    if (number != 0)
                        expect_ranges_of_positions(scenario, number, time);
                }
                if (testing::Test::HasFailure())
                    return;
            }
        });
}

constexpr double first_part = 30.0; // s
constexpr double sampling = 0.05;   // s

/// Smallest distance of a place to the hunter's path.
double distance_to_path(const scenario& scenario, const vehicle_motion& place) {
    double smallest = std::numeric_limits<double>::max();
    for (double time = 0.0; time < 60.0; time += 0.01) {
        const vehicle_motion hunter = scenario.unit(0, time);
        smallest =
            std::min(smallest, std::hypot(hunter.north - place.north, hunter.east - place.east));
    }
    return smallest;
}

TEST(simulated_run, follows_through_bends_past_a_near_miss_and_a_lane_change) {
    for_some_seeds(scenario_kind::following, [](const scenario& scenario) {
        double smallest_time = std::numeric_limits<double>::max();
        double hardest_braking = 0.0;
        double right_turn = 0.0; // rad
        double left_turn = 0.0;
        int north_crossings = 0;
        vehicle_motion before = scenario.unit(0, 0.0);
        for (double time = sampling; time < first_part; time += sampling) {
            const relative_motion range = scenario.target(1, time);
            EXPECT_GT(range.range_longitudinal, 4.0);
            if (range.range_rate_longitudinal < 0.0)
                smallest_time = std::min(smallest_time,
                                         -range.range_longitudinal / range.range_rate_longitudinal);
            hardest_braking =
                std::min(hardest_braking, acceleration_of(scenario.unit(1, time)).forward);
            const vehicle_motion now = scenario.unit(0, time);
            const double turned = angle_between(before.heading, now.heading);
            (turned > 0.0 ? right_turn : left_turn) += turned;
            north_crossings += (before.heading < 0.0) != (now.heading < 0.0) ? 1 : 0;
            before = now;
        }
        EXPECT_LT(smallest_time, 2.0);
        EXPECT_LT(hardest_braking, -6.0);
        EXPECT_GT(true_degrees(right_turn), 30.0);
        EXPECT_LT(true_degrees(left_turn), -20.0);
        EXPECT_GE(north_crossings, 1);
        EXPECT_NEAR(distance_to_path(scenario, scenario.unit(2, 1.0)), 3.5, 0.1);
        EXPECT_NEAR(distance_to_path(scenario, scenario.unit(2, 13.0)), 0.0, 0.2);
    });
}

/// The time of the closest approach in the first part of a run.
double closest_approach(const scenario& scenario, std::size_t target) {
    double best = 0.0;
    double smallest = std::numeric_limits<double>::max();
    for (double time = 0.0; time < first_part; time += sampling / 10) {
        const relative_motion range = scenario.target(target, time);
        const double distance = std::hypot(range.range_longitudinal, range.range_lateral);
        if (distance < smallest) {
            smallest = distance;
            best = time;
        }
    }
    return best;
}

TEST(simulated_run, meets_oncoming_targets_in_the_other_lane) {
    for_some_seeds(scenario_kind::oncoming, [](const scenario& scenario) {
        double last = 0.0;
        for (std::size_t target = 1; target <= 4; ++target) {
            const double time = closest_approach(scenario, target);
            EXPECT_GT(time, last + 1.0) << "one after the other";
            last = time;
            const relative_motion range = scenario.target(target, time);
            EXPECT_NEAR(range.range_longitudinal, 0.0, 0.3);
            EXPECT_NEAR(range.range_lateral, -3.5, 0.3);
            EXPECT_NEAR(range.range_rate_longitudinal, -40.0, 5.0);
            EXPECT_GT(scenario.target(target, time - 3.0).range_longitudinal, 100.0);
            EXPECT_LT(scenario.target(target, time + 3.0).range_longitudinal, -100.0);
            const double turned =
                angle_between(scenario.unit(0, time).heading, scenario.unit(target, time).heading);
            EXPECT_NEAR(std::abs(true_degrees(turned)), 180.0, 0.1);
        }
    });
}

TEST(simulated_run, meets_crossing_targets_at_right_angles_on_every_lap) {
    for_some_seeds(scenario_kind::crossing, [](const scenario& scenario) {
        for (std::size_t target = 1; target <= 4; ++target) {
            const double time = closest_approach(scenario, target);
            EXPECT_TRUE(time > 5.0 && time < first_part - 1.0) << time;
            const double turned =
                angle_between(scenario.unit(0, time).heading, scenario.unit(target, time).heading);
            EXPECT_NEAR(true_degrees(turned), target % 2 == 1 ? 90.0 : -90.0, 3.0);
            for (const double again : {time, time + 120.0, time + 80040.0}) {
                const relative_motion range = scenario.target(target, again);
                const double distance = std::hypot(range.range_longitudinal, range.range_lateral);
                EXPECT_TRUE(distance > 4.5 && distance < 9.0) << distance;
            }
        }
    });
}

TEST(simulated_run, loses_position_quality_for_a_while) {
    for (std::size_t number = 0; number <= 4; ++number) {
        std::size_t seconds_of_float = 0;
        double oldest = 0.0;
        for (int second = 0; second < 40; ++second) {
            const satellite_fix fix = satellite_fix_of(number, second);
            EXPECT_TRUE(fix.satellites >= 9 && fix.satellites <= 14) << +fix.satellites;
            EXPECT_EQ(fix.position_mode, fix.position_accuracy > 0.1 ? 5 : 6);
            seconds_of_float += fix.position_mode == 5 ? 1 : 0;
            oldest = std::max(oldest, fix.differential_age);
        }
        EXPECT_EQ(seconds_of_float, 8U);
        EXPECT_GT(oldest, 9.0);
    }
}

} // namespace
} // namespace harness
