#include "tools/rtrange/frame_outcomes.hpp"

#include <algorithm>

#include "zel/log.h"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

/// Classifies a frame by the header fields that the decoder looks at.
frame_outcomes::traffic frame_outcomes::traffic_of(std::span<const std::uint8_t> frame) {
    if (frame.size() >= 14 && (frame[12] != 0x08 || frame[13] != 0x00))
        return traffic::not_ipv4;
    if (frame.size() >= 34 && frame[23] != 17)
        return traffic::not_udp;
    if (frame.size() < 42)
        return traffic::too_short;
    const int port = frame[36] << 8 | frame[37];
    return port == 3000 || port == 3003 ? traffic::ncom_or_rcom : traffic::other_port;
}

void frame_outcomes::log(const zel_log_info_t& record) {
    if (record.level >= ZEL_LOG_LEVEL_NOTABLE) {
        if (const auto unit = parse_identification(record.message)) {
            identified_.push_back(*unit);
            if (unit->unit == zel::toolbox::rt_range::hunter)
                hunter_address_ = unit->address;
        }
        return;
    }
    complaint_ = complaint{{record.function, record.line}, record.message};
}

void frame_outcomes::begin_frame(const captured_frame& frame) {
    first_time_ns = frames == 0 ? frame.time_ns : std::min(first_time_ns, frame.time_ns);
    last_time_ns = std::max(last_time_ns, frame.time_ns);
    ++frames;
    cut += frame.cut ? 1 : 0;
    traffic_ = traffic_of(frame.bytes);
    if (traffic_ == traffic::ncom_or_rcom)
        check_for_step_back(frame.time_ns);
}

void frame_outcomes::end_frame(const captured_frame& frame, std::size_t decoded_packages) {
    for (const identified_unit& unit : identified_)
        ++identifications.try_emplace(unit, identification{frame.time_ns, 0}).first->second.count;
    identified_.clear();

    if (decoded_packages > 0) {
        ++decoded;
        count_complaint(decoded_in_part);
    } else if (traffic_ == traffic::not_ipv4) {
        ++not_ipv4;
    } else if (traffic_ == traffic::not_udp) {
        ++not_udp;
    } else if (traffic_ == traffic::other_port) {
        ++other_ports;
    } else if (complaint_) {
        count_complaint(refusals);
    } else {
        // The decoder logs a reason for every other frame that it does not decode.
        ++ignored_rcom;
    }
    complaint_.reset();
}

void frame_outcomes::check_for_step_back(std::uint64_t time_ns) {
    if (time_ns < latest_datagram_ns_) {
        constexpr std::size_t most = 100;
        if (first_steps_back.size() < most)
            first_steps_back.push_back({latest_datagram_ns_, time_ns});
        ++steps_back;
        hunter_address_.reset();
    }
    latest_datagram_ns_ = time_ns;
}

void frame_outcomes::count_complaint(remarks& list) {
    if (complaint_)
        ++list.try_emplace(complaint_->source_line, remark{complaint_->message, 0})
              .first->second.count;
}

} // namespace rtrange
