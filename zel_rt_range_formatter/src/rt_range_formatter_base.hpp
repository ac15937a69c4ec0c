// The decoder that both formatters share.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "extensibility/logger.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/records/units.hpp"
#include "zel_rt_range_formatter/src/foreign_traffic_throttle.hpp"
#include "zel_rt_range_formatter/src/heading_filter.hpp"
#include "zel_rt_range_formatter/src/package_output.hpp"
#include "zel_rt_range_formatter/src/sample_batch.hpp"
#include "zel_rt_range_formatter/src/udp_datagram.hpp"
#include "zel_rt_range_formatter/src/unit_addresses.hpp"
#include "zel_rt_range_formatter/src/unit_state.hpp"

namespace zel::toolbox::rt_range {

/// Decodes Ethernet frames into NCOM and RCOM packages. Holds all state that persists from one
/// frame to the next.
class rt_range_formatter_base {
protected:
    explicit rt_range_formatter_base(std::shared_ptr<extensibility::log::logger> logger);

    /// Decodes one Ethernet II frame of at least 14 bytes and adds its packages to `output`. True
    /// when a datagram was decoded. False when the frame was dropped: without a log record for RCOM
    /// packet types 0 and 4 and for foreign traffic that is not due to be logged, with one
    /// otherwise. Throws only what the host's functions report.
    bool process_rt_range_data(const std::uint8_t* frame, std::uint64_t frame_size,
                               package_output& output);

    /// Clears everything decoded and learnt. Keeps the log throttles, the last timestamp and the
    /// current unit.
    void reset();

private:
    // Dispatch: rt_range_formatter_base.cpp. `unit` is always a unit index.
    bool is_for_decoder(const std::uint8_t* frame, std::uint64_t frame_size,
                        std::uint64_t reference_timestamp);
    void follow_time(std::uint64_t reference_timestamp);
    bool process_ncom_datagram(const udp_datagram& datagram, package_output& output);
    bool process_rcom_datagram(const udp_datagram& datagram, package_output& output);
    std::uint32_t process_rcom_packet(const udp_datagram& datagram, package_output& output);
    ncom_unit_record& hunter_record() { return units_[hunter].record; }

    // NCOM: ncom_decoding.cpp
    void process_ncom(const std::uint8_t* ncom, std::uint32_t unit, package_output& output);
    void decode_time_and_motion(const std::uint8_t* ncom, unit_state& unit);
    void decode_position_and_orientation(const std::uint8_t* ncom, ncom_unit_record& record);
    void buffer_ncom_samples(const ncom_unit_record& record, package_output& output);
    void emit_ncom_sample_batch(package_output& output);

    // RCOM: rcom_lane.cpp, rcom_ext_range.cpp, rcom_target_binding.cpp, rcom_wrapped_ncom.cpp. Each
    // handler says whether the packet goes on to output, the last two by naming its unit.
    bool rcom_process_frame_lane_packet(const std::uint8_t* frame, std::uint64_t received_size);
    bool rcom_process_frame_ext_range(const std::uint8_t* frame, std::uint64_t received_size);
    void rcom_process_frame_ext_range_status_channel(const std::uint8_t* frame);
    std::uint32_t rcom_process_frame_ext_range_current_ncom(const std::uint8_t* frame);
    void identify(const std::uint8_t* addresses, std::uint32_t unit);
    std::uint32_t rcom_process_wrapped_ncom(const udp_datagram& datagram);

    std::shared_ptr<extensibility::log::logger> logger_;
    foreign_traffic_throttle not_ipv4_log_counter_;
    foreign_traffic_throttle not_udp_log_counter_;
    foreign_traffic_throttle not_rt_range_port_log_counter_;

    /// By unit index. The hunter's record also takes NCOM from addresses not yet identified.
    std::array<unit_state, unit_count> units_{};
    unit_addresses addresses_;
    rcom_unit_record rcom_record_{};
    heading_filter heading_filter_;
    sample_batch sample_batch_;

    std::uint64_t last_reference_timestamp_ = 0; ///< of the last NCOM or RCOM datagram
    std::uint32_t current_unit_index_ = hunter;  ///< unit of the current NCOM packet
};

} // namespace zel::toolbox::rt_range
