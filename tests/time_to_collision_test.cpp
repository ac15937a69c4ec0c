// Times to collision, through extended range packets.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

struct collision {
    std::int32_t range;        ///< mm
    std::int16_t rate;         ///< cm/s
    std::int16_t acceleration; ///< cm/s²
    double time;
    double accelerated_time;
};

extended_range_packet longitudinal(std::int32_t range, std::int16_t rate,
                                   std::int16_t acceleration) {
    extended_range_packet packet = range_packet(1);
    packet.range_longitudinal = range;
    packet.range_rate_longitudinal = rate;
    packet.acceleration_longitudinal = acceleration;
    return packet;
}

/// The lateral axis is sent with its sign reversed.
extended_range_packet lateral(std::int32_t range, std::int16_t rate, std::int16_t acceleration) {
    extended_range_packet packet = range_packet(1);
    packet.range_lateral = -range;
    packet.range_rate_lateral = static_cast<std::int16_t>(-rate);
    packet.acceleration_lateral = static_cast<std::int16_t>(-acceleration);
    return packet;
}

/// Both axes give the same times, and neither disturbs the other.
void expect_times(const collision& each) {
    SCOPED_TRACE(std::to_string(each.range) + ", " + std::to_string(each.rate) + ", " +
                 std::to_string(each.acceleration));
    instance plugin;
    const auto times = [&](const extended_range_packet& packet, std::vector<double> expected) {
        expect_doubles(target_package(plugin.decode(rcom_frame(packet))), unit + 596, expected);
    };
    times(longitudinal(each.range, each.rate, each.acceleration),
          {each.time, each.accelerated_time, no_collision, no_collision});
    times(lateral(each.range, each.rate, each.acceleration),
          {no_collision, no_collision, each.time, each.accelerated_time});
}

TEST(time_to_collision, thresholds) {
    const double fast = -(10.0 / 0.11);
    const double slow = 10.0 / 0.11;
    // Of 0.02 m/s², 0.072 in the companion field, the roots count; x is 2² - 2 a d with d = -10.
    const double faster = -((2.0 - std::sqrt(4.0 - 2.0 * 0.02 * -10.0)) / 0.02);
    const double braked = -((2.0 - std::sqrt(4.0 - 2.0 * -0.02 * -10.0)) / -0.02);
    const collision cases[] = {{10'000, 0, 50, no_collision, no_collision},
                               {10'000, 10, 50, no_collision, no_collision},
                               {10'000, -10, 50, no_collision, no_collision},
                               {10'000, 11, 0, fast, fast},
                               {10'000, -11, 0, slow, slow},
                               {10'000, 200, 1, -5.0, -5.0},
                               {10'000, 200, -1, -5.0, -5.0},
                               {10'000, 200, 2, -5.0, faster},
                               {10'000, 200, -2, -5.0, braked}};
    for (const collision& each : cases)
        expect_times(each);
}

TEST(time_to_collision, roots) {
    // d = -range, v = rate, a = acceleration: 0.5 a t² + v t + d = 0
    const double root = std::sqrt(14.0);
    const collision cases[] = {// One root is positive.
                               {10'000, 200, 50, -5.0, (root - 2.0) / 0.5},
                               {10'000, -200, 50, 5.0, (root + 2.0) / 0.5},
                               {-10'000, 200, -50, 5.0, (root + 2.0) / 0.5},
                               {-10'000, -200, -50, -5.0, (root - 2.0) / 0.5},
                               // Roots 2 and 3, found in either order.
                               {-6'000, -500, 200, -1.2, 2.0},
                               {6'000, 500, -200, -1.2, 2.0},
                               // Roots -2 and -3: the nearer one, without its sign.
                               {-6'000, 500, 200, 1.2, 2.0},
                               {6'000, -500, -200, 1.2, 2.0},
                               // No root: 1² - 2 * 0.5 * 10 < 0
                               {-10'000, 100, 50, 10.0, no_collision},
                               {10'000, -100, -50, 10.0, no_collision},
                               // A double root keeps its sign: 2² - 2 * 0.5 * 4 = 0
                               {-4'000, 200, 50, 2.0, -4.0},
                               {-4'000, -200, 50, -2.0, 4.0},
                               {4'000, 200, -50, -2.0, 4.0}};
    for (const collision& each : cases)
        expect_times(each);
}

TEST(time_to_collision, zero_range) {
    // The longitudinal zero is positive, the lateral one negative, and the quotient is negated. The
    // roots with an acceleration of 0.5 are 0 and -4 v; an accelerated time is an absolute value.
    for (const double sign : {1.0, -1.0}) {
        const auto rate = static_cast<std::int16_t>(200 * sign);
        instance plugin;
        const auto times = [&](const extended_range_packet& packet, std::size_t offset, double time,
                               double accelerated_time) {
            expect_doubles(target_package(plugin.decode(rcom_frame(packet))), unit + offset,
                           {time, accelerated_time});
        };
        times(longitudinal(0, rate, 0), 596, -0.0 * sign, -0.0 * sign);
        times(longitudinal(0, rate, 50), 596, -0.0 * sign, 0.0);
        times(lateral(0, rate, 0), 612, 0.0 * sign, 0.0 * sign);
        times(lateral(0, rate, 50), 612, 0.0 * sign, 0.0);
    }
}

} // namespace
} // namespace harness
