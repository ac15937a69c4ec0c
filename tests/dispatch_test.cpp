// From the Ethernet frame to the decoder of its payload.

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// The frame is dropped; the one record says why, and from which line of the dispatcher.
void expect_dropped(const outcome& result, std::uint32_t line, std::uint32_t level,
                    const std::string& message) {
    expect_refusal(result, level, message);
    if (result.logs.empty())
        return;
    EXPECT_EQ(result.logs[0].line, line);
    EXPECT_EQ(result.logs[0].file, "rt_range_formatter_base.cpp");
    EXPECT_EQ(result.logs[0].function,
              "zel::toolbox::rt_range::rt_range_formatter_base::process_rt_range_data");
}

void expect_dropped_silently(const outcome& result) {
    EXPECT_TRUE(result.packages.empty());
    EXPECT_TRUE(result.logs.empty());
}

TEST(dispatch, every_length_of_an_ncom_frame) {
    const bytes whole = ncom_frame(ncom_packet{});
    ASSERT_EQ(whole.size(), 14U + 20 + 8 + 72);
    instance plugin(ethernet_formatter());
    for (std::size_t size = 14; size < whole.size(); ++size) {
        const outcome result = plugin.decode(cut(whole, size));
        if (size < 34)
            expect_dropped(result, 55, 300, too_short("IP frame", 20, size - 14));
        else if (size < 42)
            expect_dropped(result, 79, 300, too_short("UDP frame", 8, size - 34));
        else
            expect_dropped(result, 123, 300, too_short("NCOM frame", 72, size - 42));
    }
    const outcome accepted = plugin.decode(whole);
    ASSERT_EQ(accepted.packages.size(), 1U);
    EXPECT_EQ(accepted.packages[0].u64(unit + 16), 1U) << "refused frames are not counted";
    EXPECT_TRUE(accepted.logs.empty());
}

TEST(dispatch, lengths_stated_inside_the_frame_are_not_looked_at) {
    // A header length of 60, an IPv4 total length and a UDP length of 0.
    bytes frame = with(ncom_frame(ncom_packet{}), {{14, {0x4F}}, {16, {0, 0}}, {38, {0, 0}}});
    instance plugin(ethernet_formatter());
    EXPECT_EQ(plugin.decode(frame).packages.size(), 1U);
    frame.resize(frame.size() + 50);
    EXPECT_EQ(plugin.decode(frame).packages.size(), 1U);
}

TEST(dispatch, foreign_traffic_is_logged_once_in_a_hundred_and_by_kind) {
    const bytes ncom = ncom_frame(ncom_packet{});
    const struct {
        bytes frame;
        std::uint32_t line;
        std::string message;
    } kinds[] = {
        {with(ncom, {{12, {0x86}}}), 44,
         "RT-Range: Received an Ethernet frame which does not have IPv4 data. Discarding "
         "the package. Reference timestamp : 123456789"},
        {with(ncom, {{23, {6}}}), 68, "RT-Range: Not UDP payload."},
        {datagram(bytes(72, 0xE7), 3001), 102, "RT-Range: Not NCOM or RCOM port data."},
    };
    instance plugin(ethernet_formatter());
    for (unsigned round = 0; round <= 200; ++round) {
        for (const auto& [frame, line, message] : kinds) {
            const outcome result = plugin.decode(frame, 123456789);
            if (round % 100 == 0)
                expect_dropped(result, line, 200, message);
            else
                expect_dropped_silently(result);
        }
        // Neither a reset nor other frames disturb the count.
        if (round == 50) {
            plugin.decode(ncom, 20);
            plugin.decode(ncom, 10);
        }
    }
}

TEST(dispatch, both_bytes_of_ethertype_and_port_count) {
    instance plugin(ethernet_formatter());
    const bytes ncom = ncom_frame(ncom_packet{});
    for (const std::size_t offset : {12U, 13U, 36U, 37U})
        EXPECT_TRUE(plugin.decode(with(ncom, {{offset, {0x55}}})).packages.empty()) << offset;
    // A source port of 3000 does not make it NCOM.
    const bytes reversed = with(datagram(encode(ncom_packet{}), 4000), {{34, {0x0B, 0xB8}}});
    EXPECT_TRUE(plugin.decode(reversed).packages.empty());
}

TEST(dispatch, ncom_of_structure_b_or_without_sync_is_refused) {
    instance plugin(ethernet_formatter());
    const auto decode = [&](std::uint8_t sync, std::uint8_t navigation_status) {
        return plugin.decode(
            ncom_frame(with(encode(ncom_packet{}), {{0, {sync}}, {21, {navigation_status}}})));
    };
    expect_dropped(decode(0xE8, 4), 139, 300, "Invalid sync byte. Expected = 231, Received = 232.");
    for (const std::uint8_t sync : bytes{0xE8, 0xE7})
        expect_dropped(decode(sync, 11), 132, 300, "NCOM structure B is not supported.");
    EXPECT_EQ(decode(0xE7, 10).packages.size(), 1U);
}

TEST(dispatch, rcom_heads_are_checked) {
    instance plugin(ethernet_formatter());
    for (std::size_t size = 0; size < 4; ++size)
        expect_dropped(plugin.decode(rcom_frame(bytes(size, 'W'))), 185, 300,
                       too_short("RCOM frame header", 4, size));
    expect_dropped(plugin.decode(rcom_frame({'w', 1, 0, 0})), 193, 200,
                   "Not valid RCOM sync byte.");
    for (const std::uint8_t ignored : bytes{0, 4})
        expect_dropped_silently(plugin.decode(rcom_frame({'W', ignored, 0, 0})));
    for (unsigned type = 5; type < 256; ++type)
        expect_dropped(plugin.decode(rcom_frame({'W', static_cast<std::uint8_t>(type), 0, 0})), 263,
                       300,
                       "Invalid RT-Range packet received. packet type = " + std::to_string(type));
}

TEST(dispatch, instances_share_nothing) {
    instance one(ethernet_formatter());
    instance two(ethernet_formatter());
    const bytes frame = ncom_frame(ncom_packet{});
    for (const std::uint64_t count : {1U, 2U})
        for (instance* const each : {&one, &two})
            EXPECT_EQ(each->decode(frame).packages[0].u64(unit + 16), count);
}

} // namespace
} // namespace harness
