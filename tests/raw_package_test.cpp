// From the raw package of either formatter to the Ethernet frame in it.

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

void expect_origin(const outcome& result, const std::string& formatter) {
    ASSERT_EQ(result.logs.size(), 1U);
    EXPECT_EQ(result.logs[0].file, formatter + ".cpp");
    EXPECT_EQ(result.logs[0].function,
              "zel::toolbox::rt_range::" + formatter + "::process_rt_range_data");
}

TEST(raw_package, sizes_and_the_stored_crc_are_checked_in_order) {
    const std::string corrupt = "Detected corrupted CRC!";
    const std::string header = "RT-range source header frame";
    const struct {
        bytes data;
        std::uint32_t level;
        std::string message;
    } cases[] = {{{}, 300, too_short(header, 4, 0)},
                 {bytes(3), 300, too_short(header, 4, 3)},
                 {bytes(4), 200, corrupt},
                 {bytes(200), 200, corrupt},
                 {{1, 0, 0, 0}, 300, too_short("Ethernet frame", 14, 0)},
                 {bytes(4 + 13, 1), 300, too_short("Ethernet frame", 14, 13)}};
    instance recorder;
    for (const auto& [data, level, message] : cases) {
        const outcome result = recorder.transform({data});
        EXPECT_TRUE(result.packages.empty());
        EXPECT_EQ(recorder.last_array_count, 0U);
        expect_refusal(result, level, message);
        expect_origin(result, "rt_range_formatter");
    }
    EXPECT_EQ(recorder.array_requests, std::size(cases));

    instance ethernet(ethernet_formatter());
    for (std::size_t size = 0; size < 16 + 14; ++size) {
        const outcome result = ethernet.transform({bytes(size)});
        expect_refusal(result, 300,
                       size >= 16 ? too_short("Ethernet frame", 14, size - 16)
                                  : "Unexpected Vehicle bus header (Expected at least = 16, "
                                    "Received size = " +
                                        std::to_string(size) + ").");
        expect_origin(result, "rt_range_ethernet_formatter");
    }
}

TEST(raw_package, any_stored_crc_but_zero_is_accepted) {
    instance plugin;
    raw_package raw = recorder_package(ncom_frame(ncom_packet{}));
    for (const bytes& crc : {bytes{0, 0, 0, 1}, bytes{0xFF, 0xFF, 0xFF, 0xFF}, bytes{0, 1, 0, 0}}) {
        raw.data = with(raw.data, {{0, crc}});
        EXPECT_EQ(plugin.transform(raw).packages.size(), 2U);
    }
}

TEST(raw_package, the_bare_frame_comes_first_with_its_macs_exchanged) {
    instance plugin;
    raw_package raw =
        recorder_package({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0x08, 0x00, 15, 16, 17}, 77);
    const outcome result = plugin.transform(raw);
    expect_log(result, 300, too_short("IP frame", 20, 3));
    ASSERT_EQ(result.packages.size(), 1U);
    const package& package = result.packages[0];
    EXPECT_EQ(package.format_type, "zel.eth");
    EXPECT_EQ(package.data, (bytes{7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6, 0x08, 0x00, 15, 16, 17}));
    expect_header(package, raw, 0xCDCDCDCD); // the host's own bytes

    EXPECT_EQ(plugin.decode(cut(ncom_frame(ncom_packet{}), 14)).packages.size(), 1U);
    const outcome decoded = plugin.decode(ncom_frame(ncom_packet{}));
    ASSERT_EQ(decoded.packages.size(), 2U);
    EXPECT_EQ(decoded.packages[0].format_type, "zel.eth");
    EXPECT_EQ(decoded.packages[1].format_type, "zel.rtrange");
}

TEST(raw_package, the_bus_header_and_the_state_do_not_matter) {
    recording_zelc()->state_record = true;
    recording_zelc()->state_code = 99;
    instance plugin(ethernet_formatter());
    for (const std::uint8_t filler : bytes{0x00, 0xFF}) {
        raw_package raw = ethernet_package(ncom_frame(ncom_packet{}));
        std::fill_n(raw.data.begin(), 16, filler);
        const outcome result = plugin.transform(raw);
        ASSERT_EQ(result.packages.size(), 1U) << "no package of the bare frame";
        EXPECT_EQ(result.packages[0].format_type, "zel.rtrange");
        EXPECT_TRUE(result.logs.empty());
    }
}

TEST(raw_package, the_hosts_verdict_on_the_state_decides) {
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
    instance plugin;
    recording_zelc_t& zelc = *recording_zelc();
    zelc.state_record = true;
    raw_package raw = recorder_package(ncom_frame(ncom_packet{}));
    raw.source_info = 0xF3FF;
    raw.state_value = 0x80000001;
    for (const auto& expected : cases) {
        zelc.state_code = expected.code;
        zelc.state_description = expected.description;
        const outcome result = plugin.transform(raw);
        EXPECT_EQ(result.status, 0U);
        EXPECT_EQ(result.packages.size(), expected.packages);
        ASSERT_EQ(result.logs.size(), expected.messages.size());
        for (std::size_t i = 0; i < result.logs.size(); ++i) {
            EXPECT_EQ(result.logs[i].message, expected.messages[i]);
            EXPECT_EQ(result.logs[i].level, 300U);
        }
        EXPECT_EQ(zelc.live_errors, 0);
        EXPECT_EQ(zelc.checked_state_value, raw.state_value);
        EXPECT_EQ(zelc.checked_source_id, raw.source_id);
        EXPECT_EQ(zelc.checked_nibble, 3U);
    }
    zelc.state_code = 5;
    zelc.state_description = nullptr;
    EXPECT_EQ(plugin.transform({}).logs.size(), 1U) << "the payload of a bad package is not read";
}

} // namespace
} // namespace harness
