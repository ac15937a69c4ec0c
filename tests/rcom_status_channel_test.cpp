// The status channels of the extended range packet: each writes its own bytes of the record and no
// others. Bytes that a channel leaves unread are 0x99.
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();

const std::vector<channel_case> channels{
    {0,
     {0xFE, 0xFF, 0xFF, 0xFF, 11, 12, 0xFF, 0xFF},
     {place(32, -2), {38, {11, 12}}, place(40, largest)}},
    {0, {1, 2, 3, 4, 13, 14, 0xFE, 0xFF}, {{32, {1, 2, 3, 4}}, {38, {13, 14}}, place(40, 65.534)}},
    {1, {11, 12, 13, 14, 15, 16, 17, 18}, {{55, {11, 12, 13, 14, 15, 16, 17, 18}}}},
    {2, {21, 22, 23, 24, 25, 0xF6, 0x99, 0x99}, {{63, {21, 22, 23, 24, 25, 0xF6}}}},
    {3, {31, 32, 33, 34, 35, 0xF6, 0x99, 0x99}, {{69, {31, 32, 33, 34, 35, 0xF6}}}},
    {4, {41, 42, 43, 44, 45, 0xF6, 0x99, 0x99}, {{75, {41, 42, 43, 44, 45, 0xF6}}}},
    {5, {0xFF, 0xFF, 0x99, 0x99, 0x99, 0x99, 0x99, 0x99}, {place(81, largest)}},
    {5, {0xFE, 0xFF, 0x99, 0x99, 0x99, 0x99, 0x99, 0x99}, {place(81, 65.534)}},
    {6, {61, 62, 63, 0xFF, 0xFF, 0xFF, 0x99, 0x99}, {{48, {61, 62, 63, 0xFF, 0xFF, 0xFF, 0}}}},
    {7,
     {0xFE, 0xF1, 0x99, 71, 72, 0xF3, 74, 0x99},
     {{36, {0xFE, 0xF1}}, {105, {71, 72, 0xF3, 74}}}},
    {8, two(810000001, -820000002), {place(141, 81.0000001, -82.0000002)}},
    {8, two(-810000003, 820000004), {place(141, -81.0000003, 82.0000004)}},
    {9, {10, 0, 0, 1, 10, 0, 0, 2}, {{452, {10, 0, 0, 1, 10, 0, 0, 2}}}},
    {10, two(-101001, -294967295), {place(157, -101.001, 400.0000001)}}, // 4000000001 unsigned
    {11, two(-110000001, -110000002), {place(420, -11.0000001, -11.0000002)}},
    {12, two(-120001, -120000002), {place(436, -120.001, -12.0000002)}},
    {13, three(-1, -8388608, -1301), {place(173, -0.001, -8388.608, -1.301)}},
    {14, three(8388607, -1402, -32768), {place(197, 8388.607, -1.402, -32.768)}},
    {14, three(-1401, 8388607, 32767), {place(197, -1.401, 8388.607, 32.767)}},
    {15,
     {151, 152, 153, 154, 155, 156, 157, 158},
     {{221, {151, 152, 153, 154, 155, 156, 157, 158}}}},
    {16,
     {1, 0x80, 0xE8, 0x83, 0xFE, 0xFF, 0xFF, 0xFF},
     {place(229, 32.769, 33.768, 65.534, 65.535)}},
    {17,
     {0xE8, 0x83, 0xFF, 0xFF, 0xFD, 0xFC, 0x99, 0x99},
     {place(261, 33.768, 65.535), {277, {0xFD, 0xFC, 0, 0}}}},
    {18, {0, 0, 0xC0, 0xBF, 0, 0, 0x80, 0x7F}, {place(281, -1.5, infinite)}},
    // A quiet NaN keeps its payload; the second value is the smallest subnormal.
    {19, {0x40, 0x23, 0xC1, 0x7F, 1, 0, 0, 0}, {place(297, 0x7FF8246800000000, 0x1p-149)}},
    {20, two(-200000001, -200000002), {place(109, -20.0000001, -20.0000002)}},
    {21, two(-210001, -210000002), {place(125, -210.001, -21.0000002)}}};

TEST(rcom_status_channel, writes_its_own_bytes_only) {
    expect_channels(
        channels,
        [](const channel_case& each) {
            return rcom_frame(range_packet(0, each.channel, each.data));
        },
        note_rcom_packet(331));
}

TEST(rcom_status_channel, data_end_before_the_velocity) {
    instance plugin;
    for (const auto& [channel, offset] : {std::pair{13, 189U}, {14, 213U}, {16, 253U}}) {
        auto packet = range_packet(0, static_cast<std::uint8_t>(channel), {0, 0, 0, 0, 0, 0, 1, 0});
        packet.velocity_longitudinal = 0x0101;
        expect_doubles(first_package(plugin.decode(rcom_frame(packet))), offset, {0.001});
    }
}

TEST(rcom_status_channel, unknown_channel_leaves_the_channel_area_alone) {
    for (const std::uint8_t channel : bytes{22, 255}) {
        instance plugin;
        bytes before;
        for (const channel_case& each : channels)
            before =
                first_package(plugin.decode(rcom_frame(range_packet(2, each.channel, each.data))))
                    .data;
        extended_range_packet packet = range_packet(2, channel, {1, 2, 3, 4, 5, 6, 7, 8});
        packet.range_longitudinal = 12345;
        const outcome result = plugin.decode(rcom_frame(packet));
        expect_log(result, 300,
                   "Unknown status channel. status channel = " + std::to_string(channel) + ".");
        ++before[20];
        expect_data(first_package(result), with(before, {{331, {channel}}, place(347, 12.345)}));
        expect_doubles(target_package(result), unit + 572, {12.345});
    }
}

} // namespace
} // namespace harness
