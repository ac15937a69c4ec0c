// Values of a target relative to the hunter.
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// With an instance that knows the hunter and target 1.
class target_relative_values : public testing::Test {
protected:
    target_relative_values() { plugin.decode(identification(1, hunter_address, target_address)); }

    package hunter(const ncom_packet& packet) {
        return first_package(plugin.decode(ncom_frame(packet)));
    }
    package target(const ncom_packet& packet) {
        return first_package(plugin.decode(ncom_frame(packet, target_address)));
    }
    package target(const extended_range_packet& packet) {
        return target_package(plugin.decode(rcom_frame(packet)));
    }

    instance plugin;
};

double rate(double raw) {
    return degrees(raw / 100000.0);
}

TEST_F(target_relative_values, accelerations_and_rates_are_unit_minus_hunter) {
    ncom_packet packet;
    packet.acceleration = {10000, 20000, 30000};
    packet.rate = {100000, 20000, -30000};
    expect_doubles(hunter(packet), unit + 360, std::vector<double>(9));

    // The y and z axes are reversed before the difference is taken.
    packet.acceleration = {15000, 50000, -5000};
    packet.rate = {-40000, 70000, 90000};
    const package first = target(packet);
    expect_doubles(first, unit + 360, {1.5 - 1.0, -5.0 - -2.0, 0.5 - -3.0});
    expect_doubles(
        first, unit + 408,
        {rate(-40000) - rate(100000), -rate(70000) - -rate(20000), -rate(90000) - -rate(-30000)});

    // The hunter moves on; the target's values follow with the next packet that concerns it.
    packet.acceleration = {-10000, 0, 70000};
    packet.rate = {0, 0, 10000};
    hunter(packet);
    const package second = target(range_packet(1));
    expect_doubles(second, unit + 360, {1.5 - -1.0, -5.0, 0.5 - -7.0});
    expect_doubles(second, unit + 408, {rate(-40000), -rate(70000), -rate(90000) - -rate(10000)});

    // So they do for a hunter whose packets are relayed.
    packet.acceleration = {30000, 0, 0};
    plugin.decode(wrapped_frame(hunter_address, packet));
    expect_doubles(target(range_packet(1)), unit + 360, {1.5 - 3.0, -5.0, 0.5});
}

TEST(target_heading_difference, is_wrapped_to_half_a_turn) {
    // Channel 10 gives the target a heading in full degrees, past the heading filter; the hunter's
    // first heading passes the filter as it is.
    const double ten = degrees(0.174533);
    const struct {
        std::int32_t hunter_microradians;
        std::uint32_t target_heading; ///< 1e-7 degrees
        double difference;
    } cases[] = {{0, 1'800'000'000, -180.0},
                 {0, 1'800'000'001, -180.0000001 + 360.0},
                 {0, 1'799'999'999, -179.9999999},
                 {3141593, 1, degrees(3.141593) - 1 / 1e7 - 360.0},
                 {3141592, 1, degrees(3.141592) - 1 / 1e7},
                 {6108652, 100'000'000, degrees(6.108652) - 10.0 - 360.0},
                 {-174533, 100'000'000, -ten + 360.0 - 10.0 - 360.0},
                 {174533, 3'500'000'000, ten - 350.0 + 360.0},
                 {174533, 200'000'000, ten - 20.0}};
    for (const auto& each : cases) {
        SCOPED_TRACE(std::to_string(each.hunter_microradians) + ", " +
                     std::to_string(each.target_heading));
        instance plugin;
        ncom_packet packet;
        packet.heading = each.hunter_microradians;
        plugin.decode(ncom_frame(packet));
        const auto data = channel_of(wire_writer().s32(0).u32(each.target_heading));
        expect_doubles(target_package(plugin.decode(rcom_frame(range_packet(1, 10, data)))),
                       unit + 384, {each.difference});
    }
}

TEST_F(target_relative_values, heading_of_a_target_packet) {
    ncom_packet packet;
    packet.heading = -174533;
    const double heading = degrees(-0.174533);
    const package record = target(packet);
    expect_doubles(record, unit + 240, {heading}); // not brought into 0..360 itself
    expect_doubles(record, unit + 384, {0.0 - (heading + 360.0) + 360.0});
}

TEST_F(target_relative_values, pitch_is_wrapped_and_roll_is_not) {
    const auto turned = [](std::int32_t microradians) {
        const double angle = degrees(microradians / 1e6);
        return angle >= 0 ? angle : angle + 360.0;
    };
    const struct {
        std::int32_t hunter;
        std::int32_t target;
        double correction;                  ///< of the pitch difference
    } cases[] = {{174533, -174533, 360.0},  // 10 and 350 degrees
                 {-174533, 174533, -360.0}, // 350 and 10
                 {174533, 3316125, 0.0},    // less than a microradian short of half a turn
                 {174533, 3316126, 360.0},  // and beyond it
                 {3316126, 174533, -360.0}, {-1000, -500000, 0.0},
                 {-8000000, 174533, 0.0}, // more than a turn stays below zero
                 {174533, -8000000, 0.0}};
    for (const auto& each : cases) {
        SCOPED_TRACE(std::to_string(each.hunter) + ", " + std::to_string(each.target));
        ncom_packet packet;
        packet.pitch = -each.hunter; // its sign changes on the way into the record
        packet.roll = each.hunter;
        hunter(packet);
        packet.pitch = -each.target;
        packet.roll = each.target;
        const package record = target(packet);
        const double angle = degrees(each.target / 1e6);
        const double difference = turned(each.hunter) - turned(each.target);
        expect_doubles(record, unit + 248, {angle, angle});
        expect_doubles(record, unit + 392, {difference + each.correction, difference});
    }
}

TEST_F(target_relative_values, ranges_are_copied) {
    extended_range_packet packet = range_packet(1);
    packet.range_longitudinal = 45678;
    packet.range_lateral = 1234;
    packet.range_rate_longitudinal = -567;
    packet.range_rate_lateral = 89;
    const std::vector<double> copies{45.678, -1.234, -5.67, -5.67 * 3.6, -0.89, -0.89 * 3.6};
    expect_doubles(target(packet), unit + 312, copies);
    plugin.decode(rcom_frame(range_packet(0)));
    plugin.decode(rcom_frame(range_packet(2)));
    expect_doubles(target(ncom_packet{}), unit + 312, copies);
    packet.target_number = 0;
    plugin.decode(rcom_frame(packet));
    expect_doubles(hunter(ncom_packet{}), unit + 312, copies);
}

} // namespace
} // namespace harness
