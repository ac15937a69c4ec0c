#include "zel_rt_range_formatter/src/udp_datagram.hpp"

#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {
namespace {

std::uint16_t read_big_endian_u16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

} // namespace

//  Ethernet II              IPv4                                        UDP
//  0        6        12     14        23        26      30      34     36     42
//  +--------+--------+------+---------+---------+-------+-------+------+------+---------
//  | dst    | src    | 0800 | 45 ...  | 17 | .. | src   | dst   | src  | dst  | payload
//  +--------+--------+------+---------+---------+-------+-------+------+------+---------
udp_datagram read_datagram(const std::uint8_t* frame, std::uint64_t frame_size) {
    const std::uint8_t* const ip = frame + ethernet_header_size;
    const std::uint8_t* const udp = ip + ip_header_size;
    return {
        .source_ip = read_unsigned(ip + 12, 4),
        .destination_ip = read_unsigned(ip + 16, 4),
        .source_port = read_big_endian_u16(udp),
        .destination_port = read_big_endian_u16(udp + 2),
        .payload = udp + udp_header_size,
        .payload_size = frame_size - ethernet_header_size - ip_header_size - udp_header_size,
    };
}

void count_datagram(endpoint_header& endpoint, const udp_datagram& datagram) {
    endpoint.packet_count = endpoint.packet_count + 1;
    endpoint.source_ip = datagram.source_ip;
    endpoint.source_port = datagram.source_port;
    endpoint.destination_ip = datagram.destination_ip;
    endpoint.destination_port = datagram.destination_port;
}

} // namespace zel::toolbox::rt_range
