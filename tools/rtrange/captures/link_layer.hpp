// Link layers of captures.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/rtrange/captures/captured_frame.hpp"

namespace rtrange {

/// Makes plain Ethernet frames of the frames of one capture.
class frame_unwrapper {
public:
    explicit frame_unwrapper(link_layer layer) : layer_(layer) {}

    /// The frame with an Ethernet header in place of that of its link layer, and without VLAN tags.
    /// MAC addresses that the link layer does not have are zero. An untagged Ethernet frame is
    /// handed on as it is; the bytes of any other one are valid until the next call. There are no
    /// bytes if the headers are incomplete.
    captured_frame unwrap(captured_frame frame);

private:
    link_layer layer_;
    std::vector<std::uint8_t> bytes_; ///< of the last frame that was not handed on as it is
};

} // namespace rtrange
