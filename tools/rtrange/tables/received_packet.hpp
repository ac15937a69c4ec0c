// The packet in a captured frame.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace rtrange {

/// Kinds of packets that the decoder decodes.
enum class packet_kind : std::uint8_t { ncom, wrapped_ncom, range, lane };

/// In the order of the kinds.
inline constexpr std::array<const char*, 4> packet_names{"ncom", "wrapped_ncom", "range", "lane"};

/// For example "wrapped_ncom".
const char* name_of(packet_kind kind);

/// What a view needs to know of a packet besides the records that it was decoded into. Points into
/// the frame.
struct received_packet {
    packet_kind kind;
    /// The 72 bytes of an NCOM packet, and the address of the unit that sent it in wire byte order.
    const std::uint8_t* ncom = nullptr;
    std::uint32_t sender = 0;
    /// Of the NCOM, extended range or lane packet.
    std::uint8_t status_channel = 0;
    /// Of an extended range packet: its target number, 0 for the hunter, and whether the decoder
    /// takes its values. It ignores the values of a packet with an implausible range.
    std::uint8_t target_number = 0;
    bool plausible = true;

    bool is_ncom() const { return kind == packet_kind::ncom || kind == packet_kind::wrapped_ncom; }
};

/// The packet in a frame that the decoder has decoded. Nothing for any other frame.
std::optional<received_packet> packet_in(std::span<const std::uint8_t> frame);

} // namespace rtrange
