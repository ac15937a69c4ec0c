// Intake of "zel.eth.rtrange" raw packages.

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

TEST(ethernet_frame, sizes_are_checked_in_order) {
    instance subject(ethernet_formatter());
    for (std::size_t size = 0; size < 16 + 14; ++size) {
        raw_package raw;
        raw.data = bytes(size, 0);
        const outcome result = subject.transform(raw);
        EXPECT_EQ(result.status, 0U);
        EXPECT_TRUE(result.packages.empty());
        ASSERT_EQ(result.logs.size(), 1U);
        EXPECT_EQ(result.logs[0].level, 300U);
        EXPECT_EQ(result.logs[0].file, "rt_range_ethernet_formatter.cpp");
        EXPECT_EQ(result.logs[0].function,
                  "zel::toolbox::rt_range::rt_range_ethernet_formatter::process_rt_range_data");
        EXPECT_EQ(result.logs[0].message,
                  size < 16
                      ? "Unexpected Vehicle bus header (Expected at least = 16, Received size "
                        "= " +
                            std::to_string(size) + ")."
                      : "Unexpected Ethernet frame size (Expected at least = 14, Received "
                        "size = " +
                            std::to_string(size - 16) + ").");
    }
}

TEST(ethernet_frame, the_bus_header_and_the_state_do_not_matter) {
    recording_zelc()->state_record = true;
    recording_zelc()->state_code = 99;
    instance subject(ethernet_formatter());
    for (const std::uint8_t filler : bytes{0x00, 0xFF}) {
        raw_package raw = ethernet_package(ncom_frame(ncom_packet{}));
        std::fill_n(raw.data.begin(), 16, filler);
        const outcome result = subject.transform(raw);
        ASSERT_EQ(result.packages.size(), 1U) << "no package of the bare frame";
        EXPECT_EQ(result.packages[0].format_type, "zel.rtrange");
        EXPECT_EQ(result.packages[0].data.size(), 873U);
        EXPECT_TRUE(result.logs.empty());
    }
}

} // namespace
