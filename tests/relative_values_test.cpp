// Values derived from the hunter's packet: other frames of reference, differences, curvature.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

package decode(instance& plugin, const ncom_packet& packet) {
    return first_package(plugin.decode(ncom_frame(packet)));
}

/// In microradians: level, each angle alone, all of them, backward, and over the full circle.
std::vector<ncom_packet> turns() {
    std::vector<ncom_packet> packets;
    const std::int32_t angles[][3]{{0, 0, 0},
                                   {700000, 0, 0},
                                   {0, 150000, 0},
                                   {0, 0, -260000},
                                   {2345678, 123456, 234567},
                                   {-3000000, -1400000, 3100000},
                                   {6200000, 1000000, -1500000}};
    for (const auto& [heading, pitch, roll] : angles) {
        ncom_packet packet;
        packet.acceleration = {12345, -23456, 98100};
        packet.rate = {1111, -2222, 3333};
        packet.velocity = {212345, -134567, 4321};
        packet.heading = heading;
        packet.pitch = pitch;
        packet.roll = roll;
        packets.push_back(packet);
    }
    return packets;
}

TEST(relative_values, turn_accelerations_level_and_velocities_along_the_vehicle) {
    for (const ncom_packet& packet : turns()) {
        const double h = packet.heading / 1e6;
        const double p = packet.pitch / 1e6; // the sign of the wire, not the one in the record
        const double r = packet.roll / 1e6;
        const double ax = packet.acceleration[0] / 10000.0;
        const double ay = packet.acceleration[1] / 10000.0;
        const double az = packet.acceleration[2] / 10000.0;
        const double north = packet.velocity[0] / 10000.0;
        const double east = packet.velocity[1] / 10000.0;
        const double upright = std::sin(r) * ay + std::cos(r) * az;
        const std::pair<std::size_t, double> expected[] = {
            {48, std::cos(p) * ax + std::sin(p) * upright},
            {56, std::sin(r) * az - std::cos(r) * ay},
            {64, std::sin(p) * ax - std::cos(p) * upright},
            {144, std::cos(h) * north + std::sin(h) * east},
            {160, std::sin(h) * north - std::cos(h) * east}};

        instance plugin;
        const package record = decode(plugin, packet);
        for (const auto& [offset, value] : expected)
            EXPECT_NEAR(record.f64(unit + offset), value, 1e-11) << offset;
        expect_doubles(record, unit + 224, {-0.4321});
        // Between the hunter and itself there is no difference.
        expect_doubles(record, unit + 312, std::vector<double>(15));
    }
}

TEST(relative_values, negate_the_unfilled_velocity_with_every_packet) {
    instance plugin;
    for (const double zero : {-0.0, 0.0, -0.0, 0.0})
        expect_doubles(decode(plugin, turns()[1]), unit + 176, {zero, zero});
}

/// Channel 4 with velocity accuracies -3 m/s, 4 m/s and 20 m/s; the first two count.
ncom_packet with_age(std::uint8_t age) {
    return status_packet(4, {0x48, 0xF4, 0xA0, 0x0F, 0x20, 0x4E, age, 0});
}

TEST(relative_values, give_the_curvature_above_the_speed_limit) {
    const ncom_packet no_channel = status_packet(1, {});
    const struct {
        const char* what;
        ncom_packet status;
        std::int32_t north, east;
        bool above;
    } cases[] = {{"no limit yet, slow", no_channel, 1, 0, true},
                 {"no limit yet, standing", no_channel, 0, 0, false},
                 {"limit 5, at it", with_age(149), 30000, -40000, false},
                 {"limit 5, below", with_age(149), 49999, 0, false},
                 {"limit 5, just above", with_age(149), -30001, 40000, true},
                 {"limit 5, above by both", with_age(0), 36000, -36000, true},
                 {"too old", with_age(150), 500000, 500000, false},
                 {"much too old", with_age(255), 8388607, 8388607, false}};
    for (const auto& [what, status, north, east, above] : cases) {
        SCOPED_TRACE(what);
        instance plugin;
        ncom_packet packet = status;
        packet.velocity = {north, east, 90000}; // vertical speed does not count
        packet.rate = {7, 8, -12345};
        const double v_north = north / 10000.0;
        const double v_east = -(east / 10000.0);
        const double speed = std::sqrt(v_east * v_east + v_north * v_north);
        const double curvature = degrees(12345 / 100000.0) * 3.1415927410125732 / 180.0 / speed;
        expect_doubles(decode(plugin, packet), unit + 264, {above ? curvature : 0.0});
        // A channel 4 of old counts for later packets.
        packet.status_channel = 1;
        expect_doubles(decode(plugin, packet), unit + 264, {above ? curvature : 0.0});
    }
}

} // namespace
} // namespace harness
