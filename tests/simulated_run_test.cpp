// A simulated run, decoded: what comes out is what the vehicles did, to the resolution of the wire.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>

#include "simulation/simulated_traffic.hpp"
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

using namespace zel::simulation;

constexpr double microradian = 1e-6 * 180.0 / std::numbers::pi;

/// Half of the last decimal that the wire carries, and a little for the arithmetic.
constexpr double half_of(double resolution) {
    return resolution * 0.5000001;
}

double true_degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

void expect_motion(const package& package, const vehicle_motion& truth) {
    const geographic_position position = scenario::geographic(truth);
    EXPECT_NEAR(package.f64(unit + 120), degrees(position.latitude), 1e-12);
    EXPECT_NEAR(package.f64(unit + 128), degrees(position.longitude), 1e-12);
    EXPECT_NEAR(package.f64(unit + 136), position.altitude, 1e-5);
    const bool initialising = package.u32(unit + 789) == 3;
    EXPECT_NEAR(package.f64(unit + 240), initialising ? 0.0 : degrees(truth.heading),
                half_of(microradian));
    EXPECT_NEAR(package.f64(unit + 192), truth.velocity_north, half_of(1e-4));
    EXPECT_NEAR(package.f64(unit + 208), -truth.velocity_east, half_of(1e-4));
}

void expect_ranges(const package& package, const relative_motion& truth) {
    EXPECT_NEAR(package.f64(unit + 572), truth.range_longitudinal, half_of(1e-3));
    EXPECT_NEAR(package.f64(unit + 564), -truth.range_lateral, half_of(1e-3));
    EXPECT_NEAR(package.f64(unit + 588), truth.range_rate_longitudinal, half_of(1e-2));
    EXPECT_NEAR(package.f64(unit + 580), -truth.range_rate_lateral, half_of(1e-2));
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
    } else if (channel == 10) {
        EXPECT_NEAR(target.f64(unit + 240), true_degrees(truth.heading), half_of(1e-7));
    } else {
        expect_motion(target, truth);
    }
}

TEST(simulated_run, decodes_into_what_the_vehicles_did) {
    for (const std::size_t targets : {1U, 2U, 4U}) {
        traffic_options options;
        options.duration_s = 90;
        options.rate_hz = 20;
        options.targets = targets;
        options.seed = targets;
        const scenario scenario(options.seed, targets);
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
            const auto number = static_cast<std::size_t>(std::ranges::find(unit_tags, last.u32(0)) -
                                                         unit_tags.begin());
            ++(number == 0 ? hunter_packets : targets_packets.at(type));
            EXPECT_EQ(number == 5, type == lane); // the RCOM record alone
            if (type == ext_range)
                expect_range_packet(packages[0], last, scenario, number, time);
            else if (type != lane)
                expect_motion(last, scenario.unit(number, time));
        };
        for (std::uint64_t tick = 0; tick < ticks && !HasFailure(); ++tick)
            send_tick(options, scenario, tick, [&](auto, std::span<const std::uint8_t> frame) {
                check(tick_time(options, tick), frame);
            });
        EXPECT_EQ(hunter_packets, ticks);
        EXPECT_EQ(targets_packets[ncom] + targets_packets[wrapped], targets * (ticks - 1));
        EXPECT_EQ(targets_packets[wrapped], targets * (ticks / options.wrapped_every - 1));
        EXPECT_EQ(targets_packets[ext_range], targets * ticks);
        EXPECT_EQ(targets_packets[lane], ticks / 5);
    }
}

/// The ranges' rates are the ranges' derivatives, and the positions' distance is the range.
TEST(simulated_run, the_truth_agrees_with_itself) {
    const scenario scenario(7, 3);
    constexpr double step = 1e-4;
    for (double time = 1.0; time < 120.0; time += 3.7) {
        for (std::size_t target = 1; target <= 3; ++target) {
            const relative_motion now = scenario.target(target, time);
            const relative_motion before = scenario.target(target, time - step);
            const relative_motion after = scenario.target(target, time + step);
            EXPECT_NEAR(now.range_rate_longitudinal,
                        (after.range_longitudinal - before.range_longitudinal) / (2 * step), 1e-5);
            EXPECT_NEAR(now.range_rate_lateral,
                        (after.range_lateral - before.range_lateral) / (2 * step), 1e-5);
            const vehicle_motion hunter = scenario.unit(0, time);
            const vehicle_motion other = scenario.unit(target, time);
            EXPECT_NEAR(std::hypot(now.range_longitudinal, now.range_lateral),
                        std::hypot(other.north - hunter.north, other.east - hunter.east), 1e-9);
            EXPECT_NEAR(std::tan(hunter.heading) * hunter.velocity_north, hunter.velocity_east,
                        1e-9);
        }
    }
}

} // namespace
} // namespace harness
