// One frame of a network.
#pragma once

#include <cstdint>
#include <span>

namespace rtrange {

/// One captured frame; its bytes are valid until the next one is read.
struct captured_frame {
    std::uint64_t time_ns; ///< nanoseconds since 1970
    std::span<const std::uint8_t> bytes;
    bool cut; ///< the recording kept only the frame's beginning
};

} // namespace rtrange
