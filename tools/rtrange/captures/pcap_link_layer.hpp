// Link layers by their numbers in libpcap.
#pragma once

#include <optional>

#include <pcap/pcap.h>

#include "tools/rtrange/captures/captured_frame.hpp"

namespace rtrange {

/// The link layer of a capture; nothing if rtrange cannot read its frames.
inline std::optional<link_layer> link_layer_of(pcap_t* capture) {
    constexpr int raw_ip_of_openbsd = 14;
    switch (pcap_datalink(capture)) {
    case DLT_EN10MB:
        return link_layer::ethernet;
    case DLT_LINUX_SLL:
        return link_layer::linux_cooked;
    case DLT_LINUX_SLL2:
        return link_layer::linux_cooked_2;
    case DLT_RAW:
    case DLT_IPV4:
    case raw_ip_of_openbsd:
        return link_layer::raw_ip;
    default:
        return std::nullopt;
    }
}

} // namespace rtrange
