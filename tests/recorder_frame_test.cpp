// Intake of "zel.rtrange" raw packages.

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr const char* process_function =
    "zel::toolbox::rt_range::rt_range_formatter::process_rt_range_data";

struct log_expectation {
    std::uint32_t level;
    const char* message;
};

void expect_single_log(const outcome& result, const log_expectation& expected) {
    ASSERT_EQ(result.logs.size(), 1U);
    EXPECT_EQ(result.logs[0].level, expected.level);
    EXPECT_EQ(result.logs[0].message, expected.message);
    EXPECT_EQ(result.logs[0].function, process_function);
    EXPECT_EQ(result.logs[0].file, "rt_range_formatter.cpp");
}

TEST(recorder_frame, sizes_and_the_stored_crc_are_checked_in_order) {
    const struct {
        bytes data;
        log_expectation log;
    } cases[] = {
        {{},
         {300, "Unexpected RT-range source header frame size (Expected at least = 4, Received size "
               "= 0)."}},
        {{0, 0, 0},
         {300, "Unexpected RT-range source header frame size (Expected at least = 4, Received size "
               "= 3)."}},
        {{0, 0, 0, 0}, {200, "Detected corrupted CRC!"}},
        {bytes(200, 0), {200, "Detected corrupted CRC!"}},
        {{1, 0, 0, 0},
         {300, "Unexpected Ethernet frame size (Expected at least = 14, Received size = 0)."}},
        {bytes(4 + 13, 1),
         {300, "Unexpected Ethernet frame size (Expected at least = 14, Received size = 13)."}},
    };
    instance subject;
    for (const auto& expected : cases) {
        raw_package raw;
        raw.data = expected.data;
        const outcome result = subject.transform(raw);
        EXPECT_EQ(result.status, 0U);
        EXPECT_TRUE(result.packages.empty());
        EXPECT_EQ(subject.last_array_count, 0U);
        expect_single_log(result, expected.log);
    }
    EXPECT_EQ(subject.array_requests, std::size(cases));
}

TEST(recorder_frame, any_stored_crc_but_zero_is_accepted) {
    instance subject;
    for (const bytes& crc : {bytes{0, 0, 0, 1}, bytes{0xFF, 0xFF, 0xFF, 0xFF}, bytes{0, 1, 0, 0}}) {
        raw_package raw;
        raw.data = crc;
        const bytes frame = ncom_frame(ncom_packet{});
        raw.data.insert(raw.data.end(), frame.begin(), frame.end());
        EXPECT_EQ(subject.transform(raw).packages.size(), 2U);
    }
}

TEST(recorder_frame, the_bare_frame_comes_first_with_its_macs_exchanged) {
    instance subject;
    bytes frame(14 + 3);
    for (std::size_t i = 0; i < frame.size(); ++i)
        frame[i] = static_cast<std::uint8_t>(i + 1);
    frame[12] = 0x08;
    frame[13] = 0x00;
    const outcome result = subject.decode(frame, 77);
    ASSERT_EQ(result.packages.size(), 1U);
    const package& package = result.packages[0];
    EXPECT_EQ(package.format_type, "zel.eth");
    EXPECT_EQ(package.data, (bytes{7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6, 0x08, 0x00, 15, 16, 17}));
    EXPECT_EQ(package.source_id, 0x1234);
    EXPECT_EQ(package.source_info, 0x5A7C);
    EXPECT_EQ(package.nibble, 0xCDCDCDCDU) << "the host's own bytes";
    EXPECT_EQ(package.pass_through_block, raw_package{}.pass_through_block);
    EXPECT_EQ(package.reference_timestamp, 77U);
    EXPECT_EQ(package.reserved_48, 0U);
    EXPECT_EQ(package.reserved_52, 0U);
    EXPECT_EQ(package.reserved_54, 0U);
    ASSERT_EQ(result.logs.size(), 1U);
    EXPECT_EQ(result.logs[0].message,
              "Unexpected IP frame size (Expected at least = 20, Received size = 3).");

    const outcome decoded = subject.decode(ncom_frame(ncom_packet{}));
    ASSERT_EQ(decoded.packages.size(), 2U);
    EXPECT_EQ(decoded.packages[0].format_type, "zel.eth");
    EXPECT_EQ(decoded.packages[1].format_type, "zel.rtrange");
}

TEST(recorder_frame, the_host_is_asked_about_the_state) {
    instance subject;
    raw_package raw = recorder_package(ncom_frame(ncom_packet{}));
    raw.source_info = 0xF3FF;
    raw.state_value = 0x80000001;
    subject.transform(raw);
    EXPECT_EQ(recording_zelc()->checked_state_value, 0x80000001U);
    EXPECT_EQ(recording_zelc()->checked_source_id, 0x1234);
    EXPECT_EQ(recording_zelc()->checked_nibble, 3U);
}

TEST(recorder_frame, the_hosts_verdict_decides) {
    const struct {
        std::uint32_t code;
        const char* description;
        std::size_t packages;
        std::vector<std::string> messages;
    } cases[] = {
        {0, nullptr, 2, {}},
        {0, "", 2, {}},
        {0, "getting old", 2, {"getting old"}},
        {1, nullptr, 0, {"Package state error."}},
        {1, "note", 0, {"note", "Package state error."}},
        {0xA0000FA1, "gone", 0, {"gone", "Package state error."}},
    };
    instance subject;
    recording_zelc_t& zelc = *recording_zelc();
    zelc.state_record = true;
    for (const auto& expected : cases) {
        zelc.state_code = expected.code;
        zelc.state_description = expected.description;
        const outcome result = subject.decode(ncom_frame(ncom_packet{}));
        EXPECT_EQ(result.status, 0U);
        EXPECT_EQ(result.packages.size(), expected.packages);
        ASSERT_EQ(result.logs.size(), expected.messages.size());
        for (std::size_t i = 0; i < result.logs.size(); ++i) {
            EXPECT_EQ(result.logs[i].message, expected.messages[i]);
            EXPECT_EQ(result.logs[i].level, 300U);
        }
        EXPECT_EQ(zelc.live_errors, 0);
    }
    zelc.state_code = 5;
    zelc.state_description = nullptr;
    EXPECT_EQ(subject.transform({}).logs.size(), 1U) << "the payload of a bad package is not read";
}

} // namespace
