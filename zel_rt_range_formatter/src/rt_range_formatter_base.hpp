// The decoder that both formatters share.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "extensibility/logger.hpp"
#include "zel_rt_range_formatter/src/datagram.hpp"
#include "zel_rt_range_formatter/src/heading_filter.hpp"
#include "zel_rt_range_formatter/src/low_pass_filter.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/src/pass_through.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace zel::toolbox::rt_range {

/// Turns Ethernet frames into NCOM and RCOM packages. Everything that is kept from one frame to the
/// next lives here.
class rt_range_formatter_base {
protected:
    explicit rt_range_formatter_base(std::shared_ptr<extensibility::log::logger> logger);

    /// Decodes one Ethernet II frame of at least 14 bytes and appends its packages to
    /// `values.packages`. False when the frame was dropped, which is logged. Throws only what the
    /// host's functions report.
    bool process_rt_range_data(const std::uint8_t* frame, std::uint64_t frame_size,
                               const pass_through& values);

    /// Forgets everything decoded and learnt; log throttles and the current unit stay.
    void reset();

private:
    // Dispatch: rt_range_formatter_base.cpp
    bool is_for_decoder(const std::uint8_t* frame, std::uint64_t frame_size,
                        std::uint64_t reference_timestamp);
    void follow_time(std::uint64_t reference_timestamp);
    bool process_ncom_datagram(const datagram& datagram, const pass_through& values);
    bool process_rcom_datagram(const datagram& datagram, const pass_through& values);
    bool process_rcom_packet(const datagram& datagram, std::uint32_t& unit,
                             const pass_through& values);
    std::uint32_t unit_of(std::uint32_t source_ip) const;
    ncom_unit_record& unit_record(std::uint32_t unit);

    // NCOM: ncom_decoding.cpp
    void process_ncom(const std::uint8_t* ncom, std::uint32_t unit, const pass_through& values);
    void decode_time_and_motion(const std::uint8_t* ncom, std::uint32_t unit);
    void decode_position_and_orientation(const std::uint8_t* ncom, ncom_unit_record& record);
    void keep_absolute_time(std::uint32_t unit);

    // RCOM: rcom_lane.cpp, rcom_ext_range.cpp, rcom_target_binding.cpp, rcom_wrapped_ncom.cpp. Each
    // handler says whether the packet goes on to output; `unit` is the one that it belongs to.
    bool rcom_process_frame_lane_packet(const std::uint8_t* frame, std::uint64_t received_size);
    bool rcom_process_frame_ext_range(const std::uint8_t* frame, std::uint64_t received_size);
    void rcom_process_frame_ext_range_status_channel(const std::uint8_t* frame);
    bool rcom_process_frame_ext_range_current_ncom(const std::uint8_t* frame, std::uint32_t& unit);
    void identify(const std::uint8_t* addresses, std::uint32_t unit);
    bool rcom_process_wrapped_ncom(const datagram& datagram, std::uint32_t& unit);
    std::optional<std::uint32_t> wrapped_unit_of(const std::uint8_t* address) const;

    // Batches of filtered samples: ncom_sample_batch.cpp
    void buffer_ncom_samples(const ncom_unit_record& record, const pass_through& values);
    void emit_ncom_sample_batch(const pass_through& values);

    std::shared_ptr<extensibility::log::logger> logger_;
    std::uint32_t not_ipv4_log_counter_ = 0;
    std::uint32_t not_udp_log_counter_ = 0;
    std::uint32_t not_rt_range_port_log_counter_ = 0;

    ncom_unit_record hunter_record_{}; ///< also takes NCOM from addresses not yet identified
    std::array<ncom_unit_record, target_count> target_records_{};
    rcom_unit_record rcom_record_{};

    std::uint64_t last_reference_timestamp_ = 0; ///< of the last NCOM or RCOM datagram
    std::uint32_t current_unit_index_ = hunter;  ///< unit of the NCOM packet in hand

    /// Addresses as they stand on the wire; 0 is not yet learnt.
    std::uint32_t hunter_ip_ = 0;
    std::array<std::uint32_t, target_count> target_ips_{};

    std::array<std::uint32_t, unit_count> ncom_last_time_ms_{}; ///< time within the minute, by unit
    heading_filter heading_filter_;

    /// Samples of all units in order of arrival.
    sample_batch ncom_output_map_first_{};
    std::size_t buffered_samples_ = 0;
};

} // namespace zel::toolbox::rt_range
