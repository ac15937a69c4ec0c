// Bytes that nobody should send.

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

TEST(hostile_input, mutated_frames_in_one_instance) {
    std::mt19937 random(2);
    const std::vector<bytes> seeds{
        ncom_frame(ncom_packet{}), rcom_frame(bytes(65, 'W')), rcom_frame({'W', 1, 0xFF, 0xFF}),
        rcom_frame({'W', 2, 0xFF, 0xFF}), rcom_frame({'W', 3, 0xFF, 0xFF})};
    instance recorder(recorder_formatter());
    instance ethernet(ethernet_formatter());
    for (int round = 0; round < 20000; ++round) {
        bytes frame = seeds[random() % seeds.size()];
        frame.resize(frame.size() + random() % 160);
        if (random() % 4 == 0)
            frame.resize(14 + random() % frame.size());
        for (unsigned i = random() % 8; i > 0; --i) {
            const std::size_t from = random() % 2 == 0 && frame.size() > 42 ? 42 : 0;
            frame[from + random() % (frame.size() - from)] = static_cast<std::uint8_t>(random());
        }
        const std::uint64_t timestamp = 1000 + random() % 8;
        for (instance* const plugin : {&recorder, &ethernet}) {
            const outcome result = plugin->decode(frame, timestamp);
            EXPECT_EQ(result.status, 0U);
            expect_sound(result, timestamp);
        }
    }
}

} // namespace
} // namespace harness
