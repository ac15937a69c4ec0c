// Which address belongs to which unit, and what an extended range packet writes into the records of
// the units.
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

constexpr ip_address hunter_2{10, 0, 0, 250};
constexpr ip_address target_a{172, 16, 254, 3};
constexpr ip_address target_b{192, 168, 1, 4};
constexpr ip_address nowhere{0, 0, 0, 0};
constexpr double largest = 1.7976931348623157e308;

/// The record that takes an NCOM datagram of this address.
package record_of(instance& plugin, const ip_address& source = hunter_address) {
    return first_package(plugin.decode(ncom_frame(ncom_packet{}, source)));
}
std::uint32_t tag_of(instance& plugin, const ip_address& source) {
    return record_of(plugin, source).u32(0);
}

TEST(identification, is_announced_once_for_the_hunter_and_on_every_change_for_a_target) {
    const std::string hunter = "Successfully identified IP for hunter";
    const std::string target = "Successfully identified IP for target ";
    const struct {
        std::uint8_t target;
        ip_address hunter_ip;
        ip_address target_ip;
        std::vector<std::string> messages;
    } steps[] = {{0, nowhere, target_a, {hunter + "(0.0.0.0)."}}, // zeros are as good as none
                 {4, nowhere, nowhere, {hunter + "(0.0.0.0)."}},
                 {0, {195, 20, 7, 10}, target_b, {hunter + "(195.20.7.10)."}},
                 {2, hunter_2, target_a, {target + "2 (172.16.254.3)."}},
                 {2, hunter_2, target_a, {}},
                 {2, hunter_2, target_b, {target + "2 (192.168.1.4)."}},
                 {2, hunter_2, target_a, {target + "2 (172.16.254.3)."}},
                 {1, hunter_2, target_a, {target + "1 (172.16.254.3)."}},
                 {4, hunter_2, {255, 0, 128, 1}, {target + "4 (255.0.128.1)."}},
                 {2, hunter_2, nowhere, {target + "2 (0.0.0.0)."}}};
    instance plugin;
    for (const auto& step : steps) {
        const outcome result =
            plugin.decode(identification(step.target, step.hunter_ip, step.target_ip));
        std::vector<std::string> messages;
        for (const log_record& each : result.logs) {
            EXPECT_EQ(each.level, 400U);
            messages.push_back(each.message);
        }
        EXPECT_EQ(messages, step.messages);
    }
    EXPECT_EQ(tag_of(plugin, hunter_2), unit_tags[0]);
    EXPECT_EQ(tag_of(plugin, target_a), unit_tags[1]);
    EXPECT_EQ(tag_of(plugin, {255, 0, 128, 1}), unit_tags[4]);
    EXPECT_TRUE(plugin.decode(rcom_frame(range_packet(1, 1, {1, 2, 3, 4}))).logs.empty());
}

TEST(identification, ncom_datagrams_reach_their_unit) {
    instance plugin;
    const auto address = [](std::uint8_t target) { return ip_address{20, 0, 0, target}; };
    for (std::uint8_t target = 1; target <= 4; ++target)
        plugin.decode(identification(target, hunter_address, address(target)));
    for (const std::uint64_t count : {1U, 2U}) {
        for (std::uint8_t target = 1; target <= 4; ++target) {
            ncom_packet packet = status_packet(20, {0xF4, 0x01, 0, 0, 0, 0, 0, 0});
            packet.altitude = target;
            const auto packages = plugin.decode(ncom_frame(packet, address(target))).decoded();
            ASSERT_EQ(packages.size(), 1U);
            const package& record = packages[0];
            EXPECT_EQ(record.u32(0), unit_tags[target]);
            EXPECT_EQ(record.at<ip_address>(unit), address(target));
            EXPECT_EQ(record.u64(unit + 16), count);
            expect_doubles(record, unit + 136, {double{packet.altitude}});
            // The channel is decoded, but only the hunter's record names it.
            EXPECT_EQ(record.u32(unit + 809), 5U);
            EXPECT_EQ(record.u32(unit + 793), 0U);
        }
    }
    const package hunter = first_package(plugin.decode(ncom_frame(status_packet(21, {}))));
    EXPECT_EQ(hunter.u32(0), unit_tags[0]);
    EXPECT_EQ(hunter.u64(unit + 16), 1U);
    EXPECT_EQ(hunter.u32(unit + 793), 21U);
    EXPECT_EQ(hunter.u32(unit + 809), 0U);
    EXPECT_EQ(tag_of(plugin, {99, 0, 0, 1}), unit_tags[0]);
}

TEST(identification, first_unit_with_an_address_gets_its_datagrams) {
    instance plugin;
    plugin.decode(identification(3, nowhere, target_a));
    EXPECT_EQ(tag_of(plugin, nowhere), unit_tags[0]); // the hunter is unknown
    plugin.decode(identification(2, hunter_address, target_a));
    EXPECT_EQ(tag_of(plugin, target_a), unit_tags[2]);
    EXPECT_EQ(tag_of(plugin, nowhere), unit_tags[1]); // so are targets 1 and 4
    plugin.decode(identification(1, hunter_address, hunter_address));
    EXPECT_EQ(tag_of(plugin, hunter_address), unit_tags[0]);
    EXPECT_EQ(tag_of(plugin, nowhere), unit_tags[4]);
}

TEST(identification, position_override_of_a_target) {
    ncom_packet fix;
    fix.latitude = 0.5;
    fix.longitude = -1.0;
    fix.altitude = 1.5F;
    fix.heading = 100000;
    const double latitude = degrees(0.5);
    const double longitude = degrees(-1.0);
    const double heading = degrees(0.1);
    const struct {
        std::uint8_t channel;
        channel_data data;
        std::vector<double> position;
        double heading;
    } cases[] = {{8, two(123456789, -1), {12.3456789, -1 / 1e7, 1.5}, heading},
                 {8, two(0, 20), {0.0, 20 / 1e7, 1.5}, heading},
                 {8, two(-20, 0), {-20 / 1e7, 0.0, 1.5}, heading},
                 {8, two(0, 0), {latitude, longitude, 1.5}, heading},
                 {10, two(-2500, 2000000000), {latitude, longitude, -2.5}, 200.0},
                 {10, two(0, 10), {latitude, longitude, 0.0}, 10 / 1e7},
                 {10, two(7, 0), {latitude, longitude, 0.007}, 0.0},
                 {10, two(0, 0), {latitude, longitude, 1.5}, heading},
                 {20, two(123456789, 20), {latitude, longitude, 1.5}, heading}};
    for (const auto& each : cases) {
        instance plugin;
        plugin.decode(identification(2, hunter_address, target_a));
        plugin.decode(ncom_frame(fix, target_a));
        const package target =
            target_package(plugin.decode(rcom_frame(range_packet(2, each.channel, each.data))));
        expect_doubles(target, unit + 120, each.position);
        expect_doubles(target, unit + 240, {each.heading});
        // A packet of another channel does not bring the override back.
        plugin.decode(ncom_frame(fix, target_a));
        expect_doubles(target_package(plugin.decode(rcom_frame(range_packet(2)))), unit + 120,
                       {latitude, longitude, 1.5});
    }
}

extended_range_packet valued(std::uint8_t target, std::int16_t factor) {
    extended_range_packet packet = range_packet(target);
    packet.range_lateral = -1000 * factor;
    packet.range_longitudinal = 2000 * factor;
    packet.range_rate_lateral = static_cast<std::int16_t>(-300 * factor);
    packet.range_rate_longitudinal = static_cast<std::int16_t>(400 * factor);
    packet.hunter_value_a = 3000 * factor;
    packet.hunter_value_b = -4000 * factor;
    packet.hunter_value_c = static_cast<std::uint16_t>(700 * factor);
    packet.target_value_a = -6000 * factor;
    packet.target_value_b = 8000 * factor;
    packet.target_value_c = static_cast<std::uint16_t>(900 * factor);
    return packet;
}

TEST(identification, pair_values_go_to_the_target_and_mirrored_to_the_hunter) {
    instance plugin;
    plugin.decode(identification(1, hunter_address, target_a));
    const std::vector<double> of_target{-6.0, 8.0, 9.0, 10.0, -9.0};
    const std::vector<double> of_hunter{3.0, -4.0, 7.0, 5.0, -7.0};
    expect_doubles(target_package(plugin.decode(rcom_frame(valued(1, 1)))), unit + 272, of_target);
    expect_doubles(record_of(plugin), unit + 272, of_hunter);
    plugin.decode(rcom_frame(valued(0, 2)));
    expect_doubles(record_of(plugin), unit + 272, of_hunter);
    plugin.decode(rcom_frame(valued(3, 3)));
    expect_doubles(record_of(plugin), unit + 272, {9.0, -12.0, 21.0, 15.0, -21.0});
    expect_doubles(record_of(plugin, target_a), unit + 272, of_target);
    expect_doubles(target_package(plugin.decode(rcom_frame(range_packet(1)))), unit + 272,
                   {0.0, 0.0, 0.0, 0.0, -0.0});
}

TEST(identification, ranges_and_times_go_to_the_selected_unit) {
    instance plugin;
    const double lateral = -(1.0 / 3.0);
    const std::vector<double> times{-0.5, -0.5, lateral, lateral};
    const package target = target_package(plugin.decode(rcom_frame(valued(4, 1))));
    expect_doubles(target, unit + 564, {1.0, 2.0, 3.0, 4.0});
    expect_doubles(target, unit + 596, times);
    expect_doubles(record_of(plugin), unit + 564, std::vector<double>(8));
    plugin.decode(rcom_frame(valued(0, 2)));
    plugin.decode(rcom_frame(valued(4, 1)));
    expect_doubles(record_of(plugin), unit + 564, {2.0, 4.0, 6.0, 8.0});
    expect_doubles(record_of(plugin), unit + 596, times);
}

TEST(identification, sticky_channel_values_go_to_the_selected_unit) {
    instance plugin;
    plugin.decode(identification(2, hunter_address, target_a));
    plugin.decode(identification(3, hunter_address, target_b));
    const auto send = [&](std::uint8_t target, std::uint8_t channel, const channel_data& data) {
        plugin.decode(rcom_frame(range_packet(target, channel, data)));
    };
    const auto expect_values = [&](const ip_address& address, const std::vector<double>& values,
                                   std::uint32_t third, double distance) {
        const package record = record_of(plugin, address);
        expect_doubles(record, unit + 544, values);
        EXPECT_EQ(record.u32(unit + 560), third);
        expect_doubles(record, unit + 777, {distance});
    };
    send(2, 17, {0xDC, 0x05, 0xC4, 0x09, 0x60, 0xEA});
    send(2, 0, {0, 0, 0, 0, 0, 0, 0xE8, 0x03});
    send(2, 5, {0xD0, 0x07});
    expect_values(target_a, {1.5, 2.5}, 60000, 1.0);
    expect_values(target_b, {0.0, 0.0}, 0, 0.0);
    expect_values(hunter_address, {0.0, 0.0}, 0, 0.0);
    send(0, 1, {});
    expect_values(hunter_address, {1.5, 2.5}, 60000, 2.0);
    send(0, 5, {0xFF, 0xFF});
    expect_values(hunter_address, {1.5, 2.5}, 60000, largest);
    send(3, 1, {});
    expect_values(target_b, {1.5, 2.5}, 60000, 1.0);
    send(3, 0, {0, 0, 0, 0, 0, 0, 0xFF, 0xFF});
    expect_values(target_b, {1.5, 2.5}, 60000, largest);
    expect_values(target_a, {1.5, 2.5}, 60000, 1.0);
}

} // namespace
} // namespace harness
