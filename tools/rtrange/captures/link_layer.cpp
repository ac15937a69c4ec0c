#include "tools/rtrange/captures/link_layer.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace rtrange {
namespace {

using byte_span = std::span<const std::uint8_t>;

constexpr std::size_t address_size = 6;
constexpr std::size_t addresses_size = 2 * address_size;
constexpr std::size_t ethernet_header_size = addresses_size + 2;

/// Positions in the header of a link layer. Raw IP has none.
struct header_layout {
    std::size_t size;
    std::size_t type; ///< two bytes: the type of Ethernet frame that the payload belongs to
};

constexpr header_layout layout_of(link_layer layer) {
    switch (layer) {
    case link_layer::ethernet:
        return {ethernet_header_size, 12};
    case link_layer::linux_cooked:
        return {16, 14};
    case link_layer::linux_cooked_2:
        return {20, 0};
    case link_layer::raw_ip:
        break;
    }
    return {0, 0};
}

std::uint16_t number_at(byte_span bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

/// Of 802.1Q, of 802.1ad, and the one that switches used for outer tags before 802.1ad.
constexpr bool is_vlan_tag(std::uint16_t type) {
    return type == 0x8100 || type == 0x88A8 || type == 0x9100;
}

/// Packets of IP state their version first. Zero for neither IPv4 nor IPv6.
std::uint16_t type_of_packet(byte_span packet) {
    const int version = packet[0] >> 4;
    return version == 4 ? 0x0800 : version == 6 ? 0x86DD : 0;
}

/// Copies the MAC addresses that the header, which is complete, contains.
void copy_addresses(link_layer layer, byte_span header, std::span<std::uint8_t> addresses) {
    const auto source = addresses.subspan(address_size);
    if (layer == link_layer::ethernet)
        std::ranges::copy(header.first(addresses_size), addresses.begin());
    else if (layer == link_layer::linux_cooked && number_at(header, 4) == address_size)
        std::ranges::copy(header.subspan(6, address_size), source.begin());
    else if (layer == link_layer::linux_cooked_2 && header[11] == address_size)
        std::ranges::copy(header.subspan(12, address_size), source.begin());
}

bool is_plain_ethernet(link_layer layer, byte_span frame) {
    return layer == link_layer::ethernet &&
           (frame.size() < ethernet_header_size || !is_vlan_tag(number_at(frame, addresses_size)));
}

} // namespace

captured_frame frame_unwrapper::unwrap(captured_frame frame) {
    frame.layer = layer_;
    const byte_span captured = frame.bytes;
    if (is_plain_ethernet(layer_, captured))
        return frame;
    frame.bytes = {};
    const header_layout header = layout_of(layer_);
    if (captured.empty() || captured.size() < header.size)
        return frame;
    byte_span payload = captured.subspan(header.size);
    std::uint16_t type =
        header.size == 0 ? type_of_packet(payload) : number_at(captured, header.type);
    while (is_vlan_tag(type)) {
        frame.has_vlan_tag = true;
        constexpr std::size_t tag_size = 4; // the tag, then the type of what follows
        if (payload.size() < tag_size)
            return frame;
        type = number_at(payload, 2);
        payload = payload.subspan(tag_size);
    }
    std::array<std::uint8_t, ethernet_header_size> ethernet{};
    copy_addresses(layer_, captured, std::span(ethernet).first(addresses_size));
    ethernet[addresses_size] = static_cast<std::uint8_t>(type >> 8);
    ethernet[addresses_size + 1] = static_cast<std::uint8_t>(type);
    bytes_.assign(ethernet.begin(), ethernet.end());
    bytes_.insert(bytes_.end(), payload.begin(), payload.end());
    frame.bytes = bytes_;
    return frame;
}

} // namespace rtrange
