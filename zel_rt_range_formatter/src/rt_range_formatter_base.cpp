#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

#include <utility>

#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/output_packages.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;
namespace level = extensibility::log::level;

constexpr std::uint16_t ipv4_ethertype = 0x0800;
constexpr std::uint8_t udp_protocol = 17;

/// Hosts sort log records by these line numbers, so they stay whatever happens to this file.
constexpr log::site site(std::uint32_t fixed_line) {
    return {"zel::toolbox::rt_range::rt_range_formatter_base::process_rt_range_data",
            "rt_range_formatter_base.cpp", fixed_line};
}

/// Of each kind of foreign traffic, the first of every hundred frames is logged. The counter
/// advances after that: a host that fails to log gets the record again with the next frame.
void count_foreign(std::uint32_t& counter) {
    constexpr std::uint32_t throttle_period = 100;
    counter = (counter + 1) % throttle_period;
}

unsigned low_32_bits(std::uint64_t size) {
    return static_cast<unsigned>(size);
}

} // namespace

rt_range_formatter_base::rt_range_formatter_base(std::shared_ptr<log::logger> logger)
    : logger_(std::move(logger)) {}

void rt_range_formatter_base::reset() {
    hunter_record_ = {};
    target_records_ = {};
    rcom_record_ = {};
    hunter_ip_ = 0;
    target_ips_ = {};
    ncom_last_time_ms_ = {};
    heading_filter_ = {};
    buffered_samples_ = 0;
}

bool rt_range_formatter_base::process_rt_range_data(const std::uint8_t* frame,
                                                    std::uint64_t frame_size,
                                                    const pass_through& values) {
    if (!is_for_decoder(frame, frame_size, values.reference_timestamp))
        return false;
    follow_time(values.reference_timestamp);
    const datagram datagram = read_datagram(frame, frame_size);
    return datagram.destination_port == ncom_port ? process_ncom_datagram(datagram, values)
                                                  : process_rcom_datagram(datagram, values);
}

bool rt_range_formatter_base::is_for_decoder(const std::uint8_t* frame, std::uint64_t frame_size,
                                             std::uint64_t reference_timestamp) {
    if (frame[12] != ipv4_ethertype >> 8 || frame[13] != (ipv4_ethertype & 0xFF)) {
        if (not_ipv4_log_counter_ == 0)
            log::write(logger_, level::skipped, site(44),
                       "RT-Range: Received an Ethernet frame which does not have IPv4 data. "
                       "Discarding the package. Reference timestamp : %lu",
                       static_cast<unsigned long>(reference_timestamp));
        count_foreign(not_ipv4_log_counter_);
        return false;
    }
    const std::uint64_t ip_size = frame_size - ethernet_header_size;
    if (ip_size < ip_header_size) {
        log::write(logger_, level::malformed, site(55),
                   "Unexpected IP frame size (Expected at least = %u, Received size = %u).",
                   low_32_bits(ip_header_size), low_32_bits(ip_size));
        return false;
    }
    if (frame[ethernet_header_size + 9] != udp_protocol) {
        if (not_udp_log_counter_ == 0)
            log::write(logger_, level::skipped, site(68), "RT-Range: Not UDP payload.");
        count_foreign(not_udp_log_counter_);
        return false;
    }
    const std::uint64_t udp_size = ip_size - ip_header_size;
    if (udp_size < udp_header_size) {
        log::write(logger_, level::malformed, site(79),
                   "Unexpected UDP frame size (Expected at least = %u, Received size = %u).",
                   low_32_bits(udp_header_size), low_32_bits(udp_size));
        return false;
    }
    const std::uint16_t port = destination_port_of(frame);
    if (port != ncom_port && port != rcom_port) {
        if (not_rt_range_port_log_counter_ == 0)
            log::write(logger_, level::skipped, site(102), "RT-Range: Not NCOM or RCOM port data.");
        count_foreign(not_rt_range_port_log_counter_);
        return false;
    }
    return true;
}

/// A replay that jumps backwards starts afresh.
void rt_range_formatter_base::follow_time(std::uint64_t reference_timestamp) {
    if (reference_timestamp < last_reference_timestamp_)
        reset();
    last_reference_timestamp_ = reference_timestamp;
}

bool rt_range_formatter_base::process_ncom_datagram(const datagram& datagram,
                                                    const pass_through& values) {
    if (datagram.payload_size < ncom_packet_size) {
        log::write(logger_, level::malformed, site(123),
                   "Unexpected NCOM frame size (Expected at least = %u, Received size = %u).",
                   low_32_bits(ncom_packet_size), low_32_bits(datagram.payload_size));
        return false;
    }
    if (is_structure_b(datagram.payload)) {
        log::write(logger_, level::malformed, site(132), "NCOM structure B is not supported.");
        return false;
    }
    if (datagram.payload[0] != ncom_sync_byte) {
        log::write(logger_, level::malformed, site(139),
                   "Invalid sync byte. Expected = %u, Received = %u.", unsigned{ncom_sync_byte},
                   unsigned{datagram.payload[0]});
        return false;
    }
    const std::uint32_t unit = unit_of(datagram.source_ip);
    current_unit_index_ = unit;
    ncom_unit_record& record = unit_record(unit);
    charge(record.endpoint, datagram);
    process_ncom(datagram.payload, unit, values);
    create_ncom_package(record, unit, values);
    return true;
}

bool rt_range_formatter_base::process_rcom_datagram(const datagram& datagram,
                                                    const pass_through& values) {
    if (datagram.payload_size < rcom_header_size) {
        log::write(logger_, level::malformed, site(185),
                   "Unexpected RCOM frame header size (Expected at least = %u, Received size = "
                   "%u).",
                   low_32_bits(rcom_header_size), low_32_bits(datagram.payload_size));
        return false;
    }
    if (datagram.payload[0] != rcom_sync_byte) {
        log::write(logger_, level::skipped, site(193), "Not valid RCOM sync byte.");
        return false;
    }
    // Counted before the type is looked at: ignored and invalid types count too.
    charge(rcom_record_.endpoint, datagram);
    std::uint32_t unit = hunter;
    if (!process_rcom_packet(datagram, unit, values))
        return false;
    create_rcom_package(rcom_record_, values);
    // A lane packet concerns no unit and leaves the hunter here, who gets no package of its own.
    if (unit != hunter)
        create_ncom_package(unit_record(unit), unit, values);
    return true;
}

bool rt_range_formatter_base::process_rcom_packet(const datagram& datagram, std::uint32_t& unit,
                                                  const pass_through& values) {
    const std::uint8_t* const frame = datagram.payload;
    const std::uint8_t packet_type = frame[1];
    switch (packet_type) {
    case rcom_packet_type::lane:
        return rcom_process_frame_lane_packet(frame, datagram.payload_size);
    case rcom_packet_type::ext_range:
        return rcom_process_frame_ext_range(frame, datagram.payload_size) &&
               rcom_process_frame_ext_range_current_ncom(frame, unit);
    case rcom_packet_type::wrapped_ncom:
        if (!rcom_process_wrapped_ncom(datagram, unit))
            return false;
        process_ncom(frame + wrapped_ncom_byte::ncom, unit, values);
        return true;
    default:
        if (packet_type > rcom_packet_type::last)
            log::write(logger_, level::malformed, site(263),
                       "Invalid RT-Range packet received. packet type = %u", unsigned{packet_type});
        return false;
    }
}

/// The unit that sends from this address; the hunter for an address that nobody has claimed.
std::uint32_t rt_range_formatter_base::unit_of(std::uint32_t source_ip) const {
    if (source_ip == hunter_ip_)
        return hunter;
    for (std::uint32_t target = 1; target <= target_count; ++target)
        if (source_ip == target_ips_[target - 1])
            return target;
    return hunter;
}

ncom_unit_record& rt_range_formatter_base::unit_record(std::uint32_t unit) {
    return unit == hunter ? hunter_record_ : target_records_[unit - 1];
}

} // namespace zel::toolbox::rt_range
