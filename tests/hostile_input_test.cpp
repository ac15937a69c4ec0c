// Bytes that nobody should send.

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

/// What every result has to be, whatever came in.
void expect_sound(const outcome& result) {
    ASSERT_EQ(result.status, 0U);
    for (std::size_t i = 0; i < result.packages.size(); ++i) {
        const package& package = result.packages[i];
        if (package.format_type == "zel.eth") {
            EXPECT_EQ(i, 0U);
            continue;
        }
        ASSERT_EQ(package.format_type, "zel.rtrange");
        if (package.u32(0) == 0x00200000)
            EXPECT_EQ(package.data.size(), 1191U);
        else
            EXPECT_EQ(package.data.size(), 873U);
    }
}

TEST(hostile_input, raw_packages_of_every_length) {
    std::mt19937 random(1);
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        instance subject(*formatter);
        for (std::size_t size = 0; size <= 200; ++size) {
            for (const int filler : {0x00, 0xFF, 0x57, 0xE7, -1}) {
                raw_package raw;
                raw.data = bytes(size);
                for (std::uint8_t& byte : raw.data)
                    byte = static_cast<std::uint8_t>(filler >= 0 ? filler
                                                                 : static_cast<int>(random()));
                expect_sound(subject.transform(raw));
            }
        }
    }
}

TEST(hostile_input, mutated_frames_in_one_instance) {
    std::mt19937 random(2);
    const std::vector<bytes> seeds{
        ncom_frame(ncom_packet{}),
        ncom_frame(status_packet(16, {0, 0, 0, 0, 0, 0, 0, 0xDD})),
        rcom_frame(bytes(65, 'W')),
        rcom_frame({'W', 1, 0xFF, 0xFF}),
        rcom_frame({'W', 2, 0xFF, 0xFF}),
        rcom_frame({'W', 3, 0xFF, 0xFF}),
    };
    instance recorder(recorder_formatter());
    instance ethernet(ethernet_formatter());
    for (int round = 0; round < 20000; ++round) {
        bytes frame = seeds[random() % seeds.size()];
        frame.resize(frame.size() + random() % 160);
        if (random() % 4 == 0)
            frame.resize(14 + random() % frame.size());
        for (unsigned i = random() % 8; i > 0; --i) {
            const std::size_t from = random() % 2 == 0 ? 42 : 0;
            if (frame.size() > from)
                frame[from + random() % (frame.size() - from)] =
                    static_cast<std::uint8_t>(random());
        }
        const std::uint64_t timestamp = 1000 + random() % 8;
        expect_sound(recorder.decode(frame, timestamp));
        expect_sound(ethernet.decode(frame, timestamp));
    }
}

} // namespace
