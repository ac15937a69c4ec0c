#include "tools/rtrange/frame_outcomes.hpp"

#include <algorithm>

#include "tools/rtrange/refusal_reasons.hpp"
#include "tools/rtrange/tables/measured_values.hpp"
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
            addresses_[unit->unit] = unit->address;
        }
        return;
    }
    complaint_ = complaint{{record.function, record.line}, plain_reason(record.message)};
}

void frame_outcomes::begin_frame(const captured_frame& frame) {
    first_time_ns = frames == 0 ? frame.time_ns : std::min(first_time_ns, frame.time_ns);
    last_time_ns = std::max(last_time_ns, frame.time_ns);
    ++frames;
    cut += frame.cut ? 1 : 0;
    count_link_layer(frame);
    traffic_ = traffic_of(frame.bytes);
    gap_ns_ = 0;
    is_step_back_ = false;
    if (traffic_ == traffic::ncom_or_rcom)
        check_time(frame.time_ns);
}

void frame_outcomes::count_link_layer(const captured_frame& frame) {
    with_vlan_tag += frame.has_vlan_tag ? 1 : 0;
    if (frame.layer == link_layer::raw_ip)
        ++raw_ip;
    else if (frame.layer != link_layer::ethernet)
        ++linux_cooked;
}

frame_outcome frame_outcomes::end_frame(const captured_frame& frame,
                                        const std::optional<received_packet>& packet) {
    for (const identified_unit& unit : identified_)
        ++identifications.try_emplace(unit, identification{frame.time_ns, 0}).first->second.count;
    identified_.clear();
    const frame_outcome outcome = count(frame, packet);
    complaint_.reset();
    return outcome;
}

frame_outcome frame_outcomes::count(const captured_frame& frame,
                                    const std::optional<received_packet>& packet) {
    if (packet) {
        ++decoded;
        count_complaint(frame, decoded_in_part);
        count_faults(frame, *packet);
        return frame_outcome::decoded;
    }
    if (traffic_ == traffic::not_ipv4) {
        ++not_ipv4;
        return frame_outcome::foreign;
    }
    if (traffic_ == traffic::not_udp) {
        ++not_udp;
        return frame_outcome::foreign;
    }
    if (traffic_ == traffic::other_port) {
        ++other_ports;
        return frame_outcome::foreign;
    }
    if (complaint_) {
        refused_whole += frame.cut ? 0 : 1;
        refusal_ = stored_reason(complaint_->message);
        count_complaint(frame, refusals);
        return frame_outcome::refused;
    }
    // The decoder logs a reason for every other frame that it does not decode.
    ++ignored_rcom;
    return frame_outcome::ignored;
}

void frame_outcomes::restart() {
    add_step(restarts, first_restarts);
    addresses_ = {};
}

void frame_outcomes::check_time(std::uint64_t time_ns) {
    step_ = {latest_datagram_ns_, time_ns};
    is_step_back_ = time_ns < latest_datagram_ns_;
    if (is_step_back_) {
        add_step(steps_back, first_steps_back);
        addresses_ = {};
    } else if (latest_datagram_ns_ != 0) {
        gap_ns_ = time_ns - latest_datagram_ns_;
    }
    latest_datagram_ns_ = time_ns;
}

void frame_outcomes::add_step(std::uint64_t& count, std::vector<time_step>& list) const {
    constexpr std::size_t most = 100;
    ++count;
    if (list.size() < most)
        list.push_back(step_);
}

void frame_outcomes::count_complaint(const captured_frame& frame, remarks& list) {
    if (complaint_)
        add_remark(frame, complaint_->source_line, complaint_->message, list);
}

/// What the decoder does not check.
void frame_outcomes::count_faults(const captured_frame& frame, const received_packet& packet) {
    if (packet.is_ncom() && has_wrong_checksum(packet.ncom))
        add_remark(frame, {"checksum", 0}, "NCOM with a wrong checksum", decoded_in_part);
    if (!packet.plausible)
        add_remark(
            frame, {"range", 0},
            "extended range packet with a range above 1000 km; of its values, only addresses count",
            decoded_in_part);
}

void frame_outcomes::add_remark(const captured_frame& frame, const remark_key& key,
                                const std::string& message, remarks& list) {
    // Messages about one fault differ in numbers and addresses, of which there may be any number.
    constexpr std::size_t most_messages = 20;
    remark_key specific{message, key.second};
    const bool is_listed = list.contains(specific) || list.size() < most_messages;
    const remark first{is_listed ? message : message + ", and the like", 0, frame.number,
                       frame.capture};
    ++list.try_emplace(is_listed ? specific : key, first).first->second.count;
}

/// The reasons of different frames differ in addresses and sizes, of which there may be any number.
const char* frame_outcomes::stored_reason(const std::string& reason) {
    constexpr std::size_t most = 1000;
    if (reasons_.size() >= most && !reasons_.contains(reason))
        return "for a reason like that of earlier frames";
    return reasons_.insert(reason).first->c_str();
}

} // namespace rtrange
