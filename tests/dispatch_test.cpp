// From the Ethernet frame to the decoder of its payload.

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr std::size_t packet_count = 4 + 16; // in the data of an NCOM package

struct log_expectation {
    std::uint32_t line;
    std::uint32_t level;
    std::string message;
};

/// The frame is dropped; the one record says why. Line 0 stands for no record.
void expect_dropped(const outcome& result, const log_expectation& expected) {
    EXPECT_EQ(result.status, 0U);
    EXPECT_TRUE(result.packages.empty());
    if (expected.line == 0) {
        EXPECT_TRUE(result.logs.empty());
        return;
    }
    ASSERT_EQ(result.logs.size(), 1U);
    EXPECT_EQ(result.logs[0].message, expected.message);
    EXPECT_EQ(result.logs[0].level, expected.level);
    EXPECT_EQ(result.logs[0].line, expected.line);
    EXPECT_EQ(result.logs[0].file, "rt_range_formatter_base.cpp");
    EXPECT_EQ(result.logs[0].function,
              "zel::toolbox::rt_range::rt_range_formatter_base::process_rt_range_data");
}

std::string size_message(const std::string& what, std::size_t expected, std::size_t received) {
    return "Unexpected " + what + " size (Expected at least = " + std::to_string(expected) +
           ", Received size = " + std::to_string(received) + ").";
}

bytes with_byte(bytes frame, std::size_t offset, std::uint8_t value) {
    frame[offset] = value;
    return frame;
}

TEST(dispatch, every_length_of_an_ncom_frame) {
    const bytes whole = ncom_frame(ncom_packet{});
    ASSERT_EQ(whole.size(), 14U + 20 + 8 + 72);
    instance subject(ethernet_formatter());
    for (std::size_t size = 14; size < whole.size(); ++size) {
        const outcome result = subject.decode(cut(whole, size));
        if (size < 34)
            expect_dropped(result, {55, 300, size_message("IP frame", 20, size - 14)});
        else if (size < 42)
            expect_dropped(result, {79, 300, size_message("UDP frame", 8, size - 34)});
        else
            expect_dropped(result, {123, 300, size_message("NCOM frame", 72, size - 42)});
    }
    const outcome accepted = subject.decode(whole);
    ASSERT_EQ(accepted.packages.size(), 1U);
    EXPECT_EQ(accepted.packages[0].u64(packet_count), 1U) << "refused frames are not counted";
    EXPECT_TRUE(accepted.logs.empty());
}

TEST(dispatch, lengths_stated_inside_the_frame_are_not_looked_at) {
    bytes frame = ncom_frame(ncom_packet{});
    frame[14] = 0x4F;          // a header length of 60
    frame[16] = frame[17] = 0; // IPv4 total length
    frame[38] = frame[39] = 0; // UDP length
    instance subject(ethernet_formatter());
    EXPECT_EQ(subject.decode(frame).packages.size(), 1U);
    frame.resize(frame.size() + 50);
    EXPECT_EQ(subject.decode(frame).packages.size(), 1U);
}

TEST(dispatch, foreign_traffic_is_logged_once_in_a_hundred_and_by_kind) {
    const bytes ncom = ncom_frame(ncom_packet{});
    const struct {
        bytes frame;
        log_expectation log;
    } kinds[] = {
        {with_byte(ncom, 12, 0x86),
         {44, 200,
          "RT-Range: Received an Ethernet frame which does not have IPv4 data. Discarding "
          "the package. Reference timestamp : 123456789"}},
        {with_byte(ncom, 23, 6), {68, 200, "RT-Range: Not UDP payload."}},
        {datagram(bytes(72, 0xE7), 3001), {102, 200, "RT-Range: Not NCOM or RCOM port data."}},
    };
    instance subject(ethernet_formatter());
    for (unsigned round = 0; round <= 200; ++round) {
        for (const auto& kind : kinds) {
            const outcome result = subject.decode(kind.frame, 123456789);
            expect_dropped(result, round % 100 == 0 ? kind.log : log_expectation{});
        }
        // Neither a reset nor other frames disturb the count.
        if (round == 50) {
            subject.decode(ncom, 20);
            subject.decode(ncom, 10);
        }
    }
}

TEST(dispatch, both_bytes_of_ethertype_and_port_count) {
    instance subject(ethernet_formatter());
    const bytes ncom = ncom_frame(ncom_packet{});
    for (const std::size_t offset : {12U, 13U, 36U, 37U})
        EXPECT_TRUE(subject.decode(with_byte(ncom, offset, 0x55)).packages.empty()) << offset;
    bytes reversed = datagram(zel::simulation::encode(ncom_packet{}), 4000);
    reversed[34] = 0x0B; // a source port of 3000 does not make it NCOM
    reversed[35] = 0xB8;
    EXPECT_TRUE(subject.decode(reversed).packages.empty());
}

TEST(dispatch, ncom_of_structure_b_or_without_sync_is_refused) {
    instance subject(ethernet_formatter());
    ncom_packet packet;
    packet.sync = 0xE8;
    expect_dropped(subject.decode(ncom_frame(packet)),
                   {139, 300, "Invalid sync byte. Expected = 231, Received = 232."});
    packet.navigation_status = 11;
    expect_dropped(subject.decode(ncom_frame(packet)),
                   {132, 300, "NCOM structure B is not supported."});
    packet.sync = 0xE7;
    expect_dropped(subject.decode(ncom_frame(packet)),
                   {132, 300, "NCOM structure B is not supported."});
    packet.navigation_status = 10;
    EXPECT_EQ(subject.decode(ncom_frame(packet)).packages.size(), 1U);
}

TEST(dispatch, rcom_heads_are_checked) {
    instance subject(ethernet_formatter());
    for (std::size_t size = 0; size < 4; ++size)
        expect_dropped(subject.decode(rcom_frame(bytes(size, 'W'))),
                       {185, 300, size_message("RCOM frame header", 4, size)});
    expect_dropped(subject.decode(rcom_frame({'w', 1, 0, 0})),
                   {193, 200, "Not valid RCOM sync byte."});
    for (const std::uint8_t ignored : bytes{0, 4})
        expect_dropped(subject.decode(rcom_frame({'W', ignored, 0, 0})), {});
    for (unsigned type = 5; type < 256; ++type)
        expect_dropped(
            subject.decode(rcom_frame({'W', static_cast<std::uint8_t>(type), 0, 0})),
            {263, 300, "Invalid RT-Range packet received. packet type = " + std::to_string(type)});
}

TEST(dispatch, time_running_backwards_forgets_everything_decoded) {
    instance subject(ethernet_formatter());
    const bytes frame = ncom_frame(status_packet(20, {0x2C, 0x01}));
    const bytes other = ncom_frame(status_packet(1, {}));
    const auto count = [&](const outcome& result) {
        return result.packages.at(0).u64(packet_count);
    };
    constexpr std::size_t differential_age = 4 + 809;

    EXPECT_EQ(count(subject.decode(frame, 10)), 1U);
    EXPECT_EQ(count(subject.decode(frame, 20)), 2U);
    EXPECT_EQ(count(subject.decode(frame, 20)), 3U);
    const outcome reset = subject.decode(other, 15);
    EXPECT_EQ(count(reset), 1U);
    EXPECT_EQ(reset.packages[0].u32(differential_age), 0U);
    EXPECT_EQ(count(subject.decode(frame, 15)), 2U);
    // Foreign traffic has no say in the time, a refused NCOM datagram has.
    subject.decode(datagram({}, 9), 1);
    EXPECT_EQ(count(subject.decode(frame, 16)), 3U);
    subject.decode(datagram({}, 3000), 14);
    EXPECT_EQ(count(subject.decode(frame, 15)), 1U);
    subject.decode(rcom_frame({}), 13);
    EXPECT_EQ(count(subject.decode(frame, 14)), 1U);
}

TEST(dispatch, instances_share_nothing) {
    instance one(ethernet_formatter());
    const bytes frame = ncom_frame(ncom_packet{});
    EXPECT_EQ(one.decode(frame).packages[0].u64(packet_count), 1U);
    {
        instance two(ethernet_formatter());
        EXPECT_EQ(two.decode(frame).packages[0].u64(packet_count), 1U);
    }
    EXPECT_EQ(one.decode(frame).packages[0].u64(packet_count), 2U);
}

} // namespace
