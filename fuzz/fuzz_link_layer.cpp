// One frame of any link layer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/input.hpp"
#include "tools/rtrange/captures/link_layer.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace rtrange;
    fuzz::input input({data, size});
    const auto layer = static_cast<link_layer>(input.byte() % 4);
    const std::vector<std::uint8_t> captured = input.take(size);
    frame_unwrapper unwrapper(layer);
    const captured_frame frame = unwrapper.unwrap({1, captured, true, 2, ""});
    EXPECT_TRUE(frame.cut && frame.layer == layer && frame.time_ns == 1 && frame.number == 2);
    if (frame.bytes.empty())
        return 0;
    if (frame.bytes.data() == captured.data()) {
        EXPECT_EQ(layer, link_layer::ethernet);
        EXPECT_EQ(frame.bytes.size(), captured.size());
    } else {
        constexpr std::size_t header_size = 14;
        EXPECT_GE(frame.bytes.size(), header_size);
        const auto payload = frame.bytes.subspan(header_size);
        EXPECT_LE(payload.size(), captured.size());
        EXPECT_TRUE(std::equal(payload.rbegin(), payload.rend(), captured.rbegin()));
    }
    // No tag is left.
    EXPECT_EQ(frame_unwrapper(link_layer::ethernet).unwrap(frame).bytes.data(), frame.bytes.data());
    return 0;
}
