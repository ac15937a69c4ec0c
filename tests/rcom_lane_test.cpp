// The lane packet and its status channels.
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// Record offset of one of the 66 lane values.
std::size_t lane_value(std::size_t index) {
    return 539 + 8 * index;
}

struct scaled_value {
    std::size_t frame_offset;
    double divisor;
    std::size_t index;
};

/// Where every 16-bit value goes.
std::vector<scaled_value> scaled_values() {
    std::vector<scaled_value> all{{12, -1000, 1}, {14, -100, 29}, {16, -10, 49},  {18, -1000, 2},
                                  {20, -100, 31}, {22, -10, 51},  {40, -1000, 3}, {42, -1000, 4},
                                  {128, 100, 64}, {130, 100, 65}};
    for (std::size_t i = 0; i < 16; ++i) {
        all.push_back({74 + 2 * i, -1000, 13 + i});
        if (i < 8)
            all.insert(all.end(), {{24 + 2 * i, -1000, 5 + i}, {58 + 2 * i, -100, 33 + 2 * i}});
        if (i < 11)
            all.push_back({106 + 2 * i, 10000, 53 + i});
    }
    return all;
}

TEST(rcom_lane, every_field_has_its_place) {
    lane_packet packet{.packet_length = 0x1234, .word_4 = 0xFEDC, .byte_6 = 6, .byte_7 = 207};
    packet.bytes_44 = {44, 45, 46, 247, 48};
    packet.status_channel = 3;
    packet.byte_132 = 232;
    for (const int step : {0, 1, -1}) { // all zero, then two sets of distinct values
        packet.value_8 = step * 123456789;
        bytes payload = encode(packet);
        bytes expected = with(blank_rcom_record(),
                              {{325, {'W', 1, 0x34, 0x12}},
                               {526, {0xDC, 0xFE, 0, 0, 3, 48, 232, 6, 207, 44, 45, 46, 247}},
                               place(lane_value(0), step * 123456789 / -1000.0)});
        for (const scaled_value& each : scaled_values()) {
            const int raw = step * (100 * static_cast<int>(each.frame_offset) + 23);
            const double value = raw / each.divisor;
            payload = with(payload, {place(each.frame_offset, static_cast<std::int16_t>(raw))});
            expected = with(expected, {place(lane_value(each.index), value)});
            if (each.divisor == -100)
                expected = with(expected, {place(lane_value(each.index + 1), value * 3.6)});
            if (each.divisor == -10)
                expected = with(expected, {place(lane_value(each.index + 1), value / 1000)});
        }
        instance plugin;
        const outcome result = plugin.decode(rcom_frame(payload));
        EXPECT_EQ(result.decoded().size(), 1U);
        EXPECT_TRUE(result.logs.empty());
        expect_data(first_package(result), expected);
    }
}

TEST(rcom_lane, status_channels_write_their_own_bytes_only) {
    const channel_data any{1, 2, 3, 4, 5, 6, 7, 8};
    // Fields of more than four bytes keep their low 32 bits. The seven-byte one has no sign, the
    // six-byte one takes its sign from its fourth byte.
    const std::vector<channel_case> channels{
        {0, two(-2, 0x12345678), {place(1067, -2, 0x12345678)}},
        {1, any, {{1075, {1, 2, 3, 4, 5, 6, 7, 8}}}},
        {2, {9, 1, 2, 3, 4, 5, 6, 7}, {{1083, {9, 1, 2, 3, 4, 0, 0, 0, 0}}}},
        {2, {8, 1, 2, 3, 0xF4, 0xFF, 0xFF, 0xFF}, {{1083, {8, 1, 2, 3, 0xF4, 0, 0, 0, 0}}}},
        {6,
         {61, 62, 63, 0xFF, 0xFF, 0xFF, 0xFE, 0xF1},
         {{1092, {61, 62, 63, 0xFF, 0xFF, 0xFF, 0, 0xFE, 0xF1}}}},
        {7,
         {0xFD, 0xF1, 1, 2, 3, 0x84, 5, 6},
         {{1101, {0xFD, 0xF1, 1, 2, 3, 0x84, 0xFF, 0xFF, 0xFF, 0xFF}}}},
        {7, {3, 0x70, 1, 2, 3, 0x74, 0x85, 0x86}, {{1101, {3, 0x70, 1, 2, 3, 0x74, 0, 0, 0, 0}}}},
        {8, three(-1, -8388608, -801), {place(1111, -0.001, -8388.608, -0.801)}},
        {9, three(-8388607, -902, -32768), {place(1135, -8388.607, -0.902, -32.768)}},
        {10, three(-1001, 8388606, -32766), {place(1159, -1.001, 8388.606, -32.766)}},
        {15, {1, 2, 3, 4, 5, 6, 7, 0xF8}, {{1183, {1, 2, 3, 4, 5, 6, 7, 0xF8}}}},
        {3, any, {}},
        {5, any, {}},
        {11, any, {}},
        {14, any, {}},
        {16, any, {}},
        {255, any, {}}};
    expect_channels(
        channels,
        [](const channel_case& each) {
            return rcom_frame(
                lane_packet{.status_channel = each.channel, .status_data = each.data});
        },
        note_rcom_packet(530));
}

TEST(rcom_lane, short_packets_are_refused) {
    expect_sizes(encode(lane_packet{}), 129, "RCOM lane packet");
}

TEST(rcom_lane, leaves_the_range_values_and_concerns_no_target) {
    instance plugin;
    const auto before = plugin.decode(rcom_frame(range_packet(3, 5, {0xE8, 3}))).decoded();
    const outcome result = plugin.decode(rcom_frame(lane_packet{.status_channel = 22}));
    EXPECT_TRUE(result.logs.empty()); // an unknown lane channel is no news
    const auto packages = result.decoded();
    ASSERT_EQ(packages.size(), 1U);
    // Before the lane values only the count and the packet's own header change.
    bytes expected = with(before[0].data, {{20, {2}}, {326, {1, 133, 0, 0, 0}}});
    std::copy(packages[0].data.begin() + 526, packages[0].data.end(), expected.begin() + 526);
    expect_data(packages[0], expected);
}

} // namespace
} // namespace harness
