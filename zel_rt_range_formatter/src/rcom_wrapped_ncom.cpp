#include <cstdint>

#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;

constexpr std::uint64_t meta_info_size = 16;

constexpr const char* wrapped_ncom_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_wrapped_ncom";

} // namespace

//  0   1   2     4         8             20
//  +---+---+-----+---------+-------------+---------------------
//  | W | 3 | len | address | 12 bytes    | NCOM packet, E7 ...
//  +---+---+-----+---------+-------------+---------------------
std::uint32_t rt_range_formatter_base::rcom_process_wrapped_ncom(const udp_datagram& datagram) {
    const std::uint8_t* const frame = datagram.payload;
    const std::uint64_t after_header = datagram.payload_size - rcom_header_size;
    if (!has_size(logger_, log::here(wrapped_ncom_function), "wrapped NCOM meta info frame size",
                  meta_info_size, after_header))
        return no_unit;
    if (!has_size(logger_, log::here(wrapped_ncom_function), "wrapped NCOM frame size",
                  ncom_packet_size, after_header - meta_info_size))
        return no_unit;
    const std::uint8_t* const ncom = frame + wrapped_ncom_byte::ncom;
    if (is_structure_b(ncom)) {
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(wrapped_ncom_function),
                   "NCOM structure B is not supported.");
        return no_unit;
    }
    if (ncom[0] != ncom_sync_byte) {
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(wrapped_ncom_function),
                   "Invalid sync byte. Expected = %u, Received = %u.", unsigned{ncom_sync_byte},
                   unsigned{ncom[0]});
        return no_unit;
    }
    const std::uint8_t* const address = frame + wrapped_ncom_byte::unit_address;
    const std::uint32_t unit = addresses_.wrapped_sender(address);
    if (unit == no_unit) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, log::here(wrapped_ncom_function),
                   "Unknown target (IP ' %u.%u.%u.%u ).", unsigned{address[0]},
                   unsigned{address[1]}, unsigned{address[2]}, unsigned{address[3]});
        return no_unit;
    }
    current_unit_index_ = unit;
    endpoint_header& endpoint = units_[unit].record.endpoint;
    count_datagram(endpoint, datagram);
    // The wrapped unit is the source, the RT-Range unit that relayed its packet the destination.
    endpoint.source_ip = read_unsigned(address, 4);
    endpoint.destination_ip = datagram.source_ip;
    return unit;
}

} // namespace zel::toolbox::rt_range
