#include "tools/rtrange/tables/received_packet.hpp"

#include <cstdlib>

#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/udp_datagram.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr std::size_t source_address_byte = ethernet_header_size + 12;
constexpr std::size_t destination_port_byte = ethernet_header_size + ip_header_size + 2;
constexpr std::size_t payload_byte = ethernet_header_size + ip_header_size + udp_header_size;

received_packet ncom_packet_at(packet_kind kind, const std::uint8_t* ncom,
                               const std::uint8_t* sender) {
    received_packet packet{kind};
    packet.ncom = ncom;
    packet.sender = read_unsigned(sender, 4);
    packet.status_channel = ncom[ncom_byte::status_channel];
    return packet;
}

received_packet range_packet_at(const std::uint8_t* frame) {
    constexpr std::int64_t largest_range_mm = 1'000'000'000;
    received_packet packet{packet_kind::range};
    packet.target_number = frame[ext_range_byte::target_number];
    packet.status_channel = frame[ext_range_byte::status_channel];
    packet.plausible =
        std::abs(std::int64_t{read_signed(frame + ext_range_byte::range_longitudinal, 4)}) <=
        largest_range_mm;
    return packet;
}

received_packet lane_packet_at(const std::uint8_t* frame) {
    received_packet packet{packet_kind::lane};
    packet.status_channel = frame[lane_byte::status_channel];
    return packet;
}

std::optional<received_packet> rcom_packet_in(std::span<const std::uint8_t> payload) {
    constexpr std::size_t shortest_ext_range = ext_range_byte::status_data + 8;
    constexpr std::size_t shortest_lane = lane_byte::status_data + 8;
    if (payload.size() < rcom_header_size)
        return std::nullopt;
    const std::uint8_t* const frame = payload.data();
    switch (frame[1]) {
    case rcom_packet_type::lane:
        if (payload.size() < shortest_lane)
            return std::nullopt;
        return lane_packet_at(frame);
    case rcom_packet_type::ext_range:
        if (payload.size() < shortest_ext_range)
            return std::nullopt;
        return range_packet_at(frame);
    case rcom_packet_type::wrapped_ncom:
        if (payload.size() < wrapped_ncom_byte::ncom + ncom_packet_size)
            return std::nullopt;
        return ncom_packet_at(packet_kind::wrapped_ncom, frame + wrapped_ncom_byte::ncom,
                              frame + wrapped_ncom_byte::unit_address);
    default:
        return std::nullopt;
    }
}

} // namespace

const char* name_of(packet_kind kind) {
    return packet_names[static_cast<std::size_t>(kind)];
}

std::optional<received_packet> packet_in(std::span<const std::uint8_t> frame) {
    if (frame.size() < payload_byte)
        return std::nullopt;
    const int port = frame[destination_port_byte] << 8 | frame[destination_port_byte + 1];
    const auto payload = frame.subspan(payload_byte);
    if (port == rcom_port)
        return rcom_packet_in(payload);
    if (port != ncom_port || payload.size() < ncom_packet_size)
        return std::nullopt;
    return ncom_packet_at(packet_kind::ncom, payload.data(), frame.data() + source_address_byte);
}

} // namespace rtrange
