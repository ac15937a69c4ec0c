#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

#include <utility>

#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;

constexpr std::uint16_t ipv4_ethertype = 0x0800;
constexpr std::uint8_t udp_protocol = 17;

/// The line numbers in this operation's log records are fixed by the interface.
constexpr log::site site(std::uint32_t fixed_line) {
    return {"zel::toolbox::rt_range::rt_range_formatter_base::process_rt_range_data",
            "rt_range_formatter_base.cpp", fixed_line};
}

} // namespace

rt_range_formatter_base::rt_range_formatter_base(std::shared_ptr<log::logger> logger)
    : logger_(std::move(logger)) {}

void rt_range_formatter_base::reset() {
    units_ = {};
    addresses_ = {};
    rcom_record_ = {};
    heading_filter_ = {};
    sample_batch_ = {};
}

bool rt_range_formatter_base::process_rt_range_data(const std::uint8_t* frame,
                                                    std::uint64_t frame_size,
                                                    package_output& output) {
    if (!is_for_decoder(frame, frame_size, output.reference_timestamp()))
        return false;
    follow_time(output.reference_timestamp());
    const udp_datagram datagram = read_datagram(frame, frame_size);
    return datagram.destination_port == ncom_port ? process_ncom_datagram(datagram, output)
                                                  : process_rcom_datagram(datagram, output);
}

bool rt_range_formatter_base::is_for_decoder(const std::uint8_t* frame, std::uint64_t frame_size,
                                             std::uint64_t reference_timestamp) {
    if (frame[12] != ipv4_ethertype >> 8 || frame[13] != (ipv4_ethertype & 0xFF)) {
        if (not_ipv4_log_counter_.is_due())
            log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, site(44),
                       "RT-Range: Received an Ethernet frame which does not have IPv4 data. "
                       "Discarding the package. Reference timestamp : %lu",
                       static_cast<unsigned long>(reference_timestamp));
        not_ipv4_log_counter_.count();
        return false;
    }
    const std::uint64_t ip_size = frame_size - ethernet_header_size;
    if (!has_size(logger_, site(55), "IP frame size", ip_header_size, ip_size))
        return false;
    if (frame[ethernet_header_size + 9] != udp_protocol) {
        if (not_udp_log_counter_.is_due())
            log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, site(68), "RT-Range: Not UDP payload.");
        not_udp_log_counter_.count();
        return false;
    }
    const std::uint64_t udp_size = ip_size - ip_header_size;
    if (!has_size(logger_, site(79), "UDP frame size", udp_header_size, udp_size))
        return false;
    const std::uint16_t port = read_datagram(frame, frame_size).destination_port;
    if (port != ncom_port && port != rcom_port) {
        if (not_rt_range_port_log_counter_.is_due())
            log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, site(102),
                       "RT-Range: Not NCOM or RCOM port data.");
        not_rt_range_port_log_counter_.count();
        return false;
    }
    return true;
}

/// Resets the decoder when the time runs backwards, as it does when a replay is started again.
void rt_range_formatter_base::follow_time(std::uint64_t reference_timestamp) {
    if (reference_timestamp < last_reference_timestamp_)
        reset();
    last_reference_timestamp_ = reference_timestamp;
}

bool rt_range_formatter_base::process_ncom_datagram(const udp_datagram& datagram,
                                                    package_output& output) {
    const std::uint8_t* const ncom = datagram.payload;
    if (!has_size(logger_, site(123), "NCOM frame size", ncom_packet_size, datagram.payload_size))
        return false;
    if (is_structure_b(ncom)) {
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, site(132),
                   "NCOM structure B is not supported.");
        return false;
    }
    if (ncom[0] != ncom_sync_byte) {
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, site(139),
                   "Invalid sync byte. Expected = %u, Received = %u.", unsigned{ncom_sync_byte},
                   unsigned{ncom[0]});
        return false;
    }
    const std::uint32_t unit = addresses_.sender(datagram.source_ip);
    current_unit_index_ = unit;
    ncom_unit_record& record = units_[unit].record;
    count_datagram(record.endpoint, datagram);
    process_ncom(ncom, unit, output);
    output.add_ncom(record, unit);
    return true;
}

bool rt_range_formatter_base::process_rcom_datagram(const udp_datagram& datagram,
                                                    package_output& output) {
    if (!has_size(logger_, site(185), "RCOM frame header size", rcom_header_size,
                  datagram.payload_size))
        return false;
    if (datagram.payload[0] != rcom_sync_byte) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, site(193), "Not valid RCOM sync byte.");
        return false;
    }
    // Counted before the type is looked at: ignored and invalid types count too.
    count_datagram(rcom_record_.endpoint, datagram);
    const std::uint32_t unit = process_rcom_packet(datagram, output);
    if (unit == no_unit)
        return false;
    output.add_rcom(rcom_record_);
    if (unit != hunter)
        output.add_ncom(units_[unit].record, unit);
    return true;
}

/// The unit of a decoded packet; the hunter for a lane packet, which adds no NCOM record.
std::uint32_t rt_range_formatter_base::process_rcom_packet(const udp_datagram& datagram,
                                                           package_output& output) {
    const std::uint8_t* const frame = datagram.payload;
    const std::uint8_t packet_type = frame[1];
    switch (packet_type) {
    case rcom_packet_type::lane:
        if (!rcom_process_frame_lane_packet(frame, datagram.payload_size))
            return no_unit;
        return hunter;
    case rcom_packet_type::ext_range:
        if (!rcom_process_frame_ext_range(frame, datagram.payload_size))
            return no_unit;
        return rcom_process_frame_ext_range_current_ncom(frame);
    case rcom_packet_type::wrapped_ncom: {
        const std::uint32_t unit = rcom_process_wrapped_ncom(datagram);
        if (unit != no_unit)
            process_ncom(frame + wrapped_ncom_byte::ncom, unit, output);
        return unit;
    }
    default:
        if (packet_type > rcom_packet_type::last)
            log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, site(263),
                       "Invalid RT-Range packet received. packet type = %u", unsigned{packet_type});
        return no_unit;
    }
}

} // namespace zel::toolbox::rt_range
