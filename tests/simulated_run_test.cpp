// A simulated run, decoded: what comes out is what the vehicles did, to the resolution of the wire.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>

#include <gtest/gtest.h>

#include "simulation/simulated_traffic.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace {

using namespace harness;
using namespace zel::simulation;

constexpr std::size_t record = 4; // where the unit record begins in the package's data
constexpr double single_pi = 3.1415927410125732;
constexpr double microradian = 1e-6 * 180.0 / std::numbers::pi;

/// Half of the last decimal that the wire carries, and a little for the arithmetic.
constexpr double half_of(double resolution) {
    return resolution * 0.5000001;
}

double decoder_degrees(double radians) {
    return radians * 180.0 / single_pi;
}
double true_degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

enum rcom_type : std::uint8_t { ncom = 0, lane = 1, ext_range = 2, wrapped = 3 };

rcom_type type_of(std::span<const std::uint8_t> frame) {
    return frame[37] == (3003 & 0xFF) ? static_cast<rcom_type>(frame[43]) : ncom;
}

void expect_motion(const package& package, const vehicle_motion& truth) {
    const geographic_position position = scenario::geographic(truth);
    EXPECT_NEAR(package.f64(record + 120), decoder_degrees(position.latitude), 1e-12);
    EXPECT_NEAR(package.f64(record + 128), decoder_degrees(position.longitude), 1e-12);
    EXPECT_NEAR(package.f64(record + 136), position.altitude, 1e-5);
    const bool initialising = package.u32(record + 789) == 3;
    EXPECT_NEAR(package.f64(record + 240), initialising ? 0.0 : decoder_degrees(truth.heading),
                half_of(microradian));
    EXPECT_NEAR(package.f64(record + 192), truth.velocity_north, half_of(1e-4));
    EXPECT_NEAR(package.f64(record + 208), -truth.velocity_east, half_of(1e-4));
}

void expect_ranges(const package& package, const relative_motion& truth) {
    EXPECT_NEAR(package.f64(record + 572), truth.range_longitudinal, half_of(1e-3));
    EXPECT_NEAR(package.f64(record + 564), -truth.range_lateral, half_of(1e-3));
    EXPECT_NEAR(package.f64(record + 588), truth.range_rate_longitudinal, half_of(1e-2));
    EXPECT_NEAR(package.f64(record + 580), -truth.range_rate_lateral, half_of(1e-2));
}

/// The unit's tag, as 0 to 4; the RCOM record's gives 5.
std::size_t unit_of(const package& package) {
    const std::uint32_t number = package.u32(0) >> 20;
    return number == 1 ? 0 : number == 2 ? 5 : number - 2;
}

struct tally {
    std::size_t hunter = 0;
    std::size_t direct = 0;
    std::size_t wrapped = 0;
    std::size_t ranges = 0;
    std::size_t lanes = 0;
};

void check_frame(const outcome& result, rcom_type type, const scenario& scenario, double time,
                 bool first_tick, tally& tally) {
    ASSERT_EQ(result.status, 0U);
    const auto packages = result.decoded();
    if (packages.empty())
        return;
    const package& last = packages.back();
    const std::size_t unit = unit_of(last);
    if (type == lane) {
        EXPECT_EQ(unit, 5U);
        ++tally.lanes;
        return;
    }
    if (type == ext_range) {
        expect_ranges(last, scenario.target(unit, time));
        ++tally.ranges;
        if (first_tick)
            return; // the target's own NCOM has not come yet
        // Two status channels replace what NCOM said by what the RT-Range unit says.
        const std::uint8_t channel = packages.at(0).u8(331);
        const vehicle_motion truth = scenario.unit(unit, time);
        if (channel == 8) {
            EXPECT_NEAR(last.f64(record + 120), true_degrees(scenario::geographic(truth).latitude),
                        half_of(1e-7));
            EXPECT_NEAR(last.f64(record + 128), true_degrees(scenario::geographic(truth).longitude),
                        half_of(1e-7));
        } else if (channel == 10) {
            EXPECT_NEAR(last.f64(record + 240), true_degrees(truth.heading), half_of(1e-7));
        } else {
            expect_motion(last, truth);
        }
        return;
    }
    expect_motion(last, scenario.unit(unit, time));
    ++(unit == 0 ? tally.hunter : type == wrapped ? tally.wrapped : tally.direct);
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
        instance subject(ethernet_formatter());
        tally tally;
        for (std::uint64_t tick = 0; tick < ticks && !HasFailure(); ++tick)
            send_tick(options, scenario, tick,
                      [&](std::uint64_t time_ns, std::span<const std::uint8_t> frame) {
                          check_frame(subject.decode(bytes(frame.begin(), frame.end()), time_ns),
                                      type_of(frame), scenario, tick_time(options, tick), tick == 0,
                                      tally);
                      });
        EXPECT_EQ(tally.hunter, ticks);
        EXPECT_EQ(tally.direct + tally.wrapped, targets * (ticks - 1));
        EXPECT_EQ(tally.wrapped, targets * (ticks / options.wrapped_every - 1));
        EXPECT_EQ(tally.ranges, targets * ticks);
        EXPECT_EQ(tally.lanes, ticks / 5);
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
