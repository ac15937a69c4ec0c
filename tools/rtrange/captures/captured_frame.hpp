// A captured frame.
#pragma once

#include <cstdint>
#include <span>

namespace rtrange {

/// One captured Ethernet frame. Its bytes are valid until the next frame is read.
struct captured_frame {
    std::uint64_t time_ns; ///< nanoseconds since 1970
    std::span<const std::uint8_t> bytes;
    bool cut;             ///< only the beginning of the frame was captured
    std::uint64_t number; ///< in its capture, from 1
    const char* capture;  ///< name of the file or interface, valid as long as its reader
};

} // namespace rtrange
