// Values derived from the hunter's packet: other frames of reference, differences, curvature.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr std::size_t record = 4;         ///< where the record begins in the package's data
constexpr double pi = 3.1415927410125732; ///< single precision, as in all conversions of angles

package decode(instance& unit, const ncom_packet& packet) {
    return unit.decode(ncom_frame(packet)).decoded().at(0);
}

ncom_packet turned(std::int32_t heading, std::int32_t pitch, std::int32_t roll) {
    ncom_packet packet;
    packet.acceleration = {12345, -23456, 98100};
    packet.rate = {1111, -2222, 3333};
    packet.velocity = {212345, -134567, 4321};
    packet.heading = heading;
    packet.pitch = pitch;
    packet.roll = roll;
    return packet;
}

/// Microradians: level, each angle alone, all of them, backward, and over the full circle.
const std::vector<ncom_packet> turns{turned(0, 0, 0),
                                     turned(700000, 0, 0),
                                     turned(0, 150000, 0),
                                     turned(0, 0, -260000),
                                     turned(2345678, 123456, 234567),
                                     turned(-3000000, -1400000, 3100000),
                                     turned(6200000, 1000000, -1500000)};

TEST(relative_values, turn_accelerations_level_and_velocities_along_the_vehicle) {
    for (const ncom_packet& packet : turns) {
        const double h = packet.heading / 1e6;
        const double p = packet.pitch / 1e6; // the sign of the wire, not the one in the record
        const double r = packet.roll / 1e6;
        const double ax = packet.acceleration[0] / 10000.0;
        const double ay = packet.acceleration[1] / 10000.0;
        const double az = packet.acceleration[2] / 10000.0;
        const double north = packet.velocity[0] / 10000.0;
        const double east = packet.velocity[1] / 10000.0;
        const double level_z =
            -std::sin(p) * ax + std::cos(p) * (std::sin(r) * ay + std::cos(r) * az);

        instance unit;
        const package decoded = decode(unit, packet);
        const double near_g = 1e-12 * std::hypot(ax, ay, az);
        EXPECT_NEAR(decoded.f64(record + 48),
                    std::cos(p) * ax + std::sin(p) * (std::sin(r) * ay + std::cos(r) * az), near_g);
        EXPECT_NEAR(decoded.f64(record + 56), std::sin(r) * az - std::cos(r) * ay, near_g);
        EXPECT_NEAR(decoded.f64(record + 64), -level_z, near_g);
        const double near_speed = 1e-12 * std::hypot(north, east);
        EXPECT_NEAR(decoded.f64(record + 144), std::cos(h) * north + std::sin(h) * east,
                    near_speed);
        EXPECT_NEAR(decoded.f64(record + 160), std::sin(h) * north - std::cos(h) * east,
                    near_speed);
        EXPECT_EQ(decoded.f64(record + 224), -0.4321);
    }
}

TEST(relative_values, are_zero_between_the_hunter_and_itself) {
    for (const ncom_packet& packet : turns) {
        instance unit;
        const package decoded = decode(unit, packet);
        for (std::size_t offset = 312; offset <= 424; offset += 8)
            EXPECT_EQ(decoded.f64_bits(record + offset), 0U) << offset;
    }
}

TEST(relative_values, negate_the_unfilled_velocity_with_every_packet) {
    instance unit;
    for (const bool negative : {true, false, true, false}) {
        const std::uint64_t zero = std::bit_cast<std::uint64_t>(negative ? -0.0 : 0.0);
        const package decoded = decode(unit, turns[1]);
        EXPECT_EQ(decoded.f64_bits(record + 176), zero);
        EXPECT_EQ(decoded.f64_bits(record + 184), zero);
    }
}

/// Channel 4 with velocity accuracies -3 m/s, 4 m/s and 20 m/s; the first two count.
ncom_packet with_age(std::uint8_t age) {
    return status_packet(4, {0x48, 0xF4, 0xA0, 0x0F, 0x20, 0x4E, age, 0});
}

TEST(relative_values, give_the_curvature_above_the_speed_limit) {
    const ncom_packet no_channel = status_packet(1, {});
    struct curvature_case {
        const char* what;
        ncom_packet status;
        std::int32_t north, east;
        bool above;
    };
    const std::vector<curvature_case> cases{
        {"no limit yet, slow", no_channel, 1, 0, true},
        {"no limit yet, standing", no_channel, 0, 0, false},
        {"limit 5, at it", with_age(149), 30000, -40000, false},
        {"limit 5, below", with_age(149), 49999, 0, false},
        {"limit 5, just above", with_age(149), -30001, 40000, true},
        {"limit 5, above by both", with_age(0), 36000, -36000, true},
        {"too old", with_age(150), 500000, 500000, false},
        {"much too old", with_age(255), 8388607, 8388607, false}};
    for (const auto& [what, status, north, east, above] : cases) {
        instance unit;
        ncom_packet packet = status;
        packet.velocity = {north, east, 90000}; // vertical speed does not count
        packet.rate = {7, 8, -12345};
        const double v_north = north / 10000.0;
        const double v_east = -(east / 10000.0);
        const double speed = std::sqrt(v_east * v_east + v_north * v_north);
        const double rate_z = -(-12345 / 100000.0 * 180.0 / pi);
        EXPECT_EQ(decode(unit, packet).f64(record + 264), above ? rate_z * pi / 180.0 / speed : 0.0)
            << what;
        // A channel 4 of old counts for later packets.
        packet.status_channel = 1;
        EXPECT_EQ(decode(unit, packet).f64(record + 264) != 0.0, above) << what;
    }
}

} // namespace
