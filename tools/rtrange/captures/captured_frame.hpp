// A captured frame.
#pragma once

#include <cstdint>
#include <span>

namespace rtrange {

/// How the frames of a capture begin: with an Ethernet header, with one of the two headers that
/// Linux gives frames of any interface, or with an IP packet.
enum class link_layer : std::uint8_t { ethernet, linux_cooked, linux_cooked_2, raw_ip };

/// One captured frame, as a plain Ethernet frame. Its bytes are valid until the next frame is read.
struct captured_frame {
    std::uint64_t time_ns; ///< nanoseconds since 1970
    std::span<const std::uint8_t> bytes;
    bool cut;             ///< only the beginning of the frame was captured
    std::uint64_t number; ///< in its capture, from 1
    const char* capture;  ///< name of the file or interface, valid as long as its reader
    /// What the frame was when it was captured.
    link_layer layer = link_layer::ethernet;
    bool has_vlan_tag = false;
};

} // namespace rtrange
