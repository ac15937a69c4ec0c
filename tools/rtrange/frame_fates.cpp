#include "tools/rtrange/frame_fates.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace rtrange {
namespace {

constexpr std::uint32_t notable_level = 400;

/// The address in "... hunter(195.0.0.10)."
std::optional<std::uint32_t> hunter_address_in(const std::string& message) {
    std::array<unsigned, 4> bytes{};
    const std::size_t begin = std::min(message.find("hunter("), message.size());
    if (std::sscanf(message.c_str() + begin, "hunter(%u.%u.%u.%u)", &bytes[0], &bytes[1], &bytes[2],
                    &bytes[3]) != 4)
        return std::nullopt;
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | bytes[3] << 24;
}

} // namespace

/// What kind of traffic a frame is, by the fields that the decoder goes by.
frame_fates::traffic frame_fates::traffic_of(std::span<const std::uint8_t> frame) {
    if (frame.size() >= 14 && (frame[12] != 0x08 || frame[13] != 0x00))
        return traffic::not_ipv4;
    if (frame.size() >= 34 && frame[23] != 17)
        return traffic::not_udp;
    if (frame.size() < 42)
        return traffic::too_short;
    const int port = frame[36] << 8 | frame[37];
    return port == 3000 || port == 3003 ? traffic::ncom_or_rcom : traffic::other_port;
}

void frame_fates::log(const zel_log_info_t& record) {
    if (record.level >= notable_level) {
        announcements_.emplace_back(record.message);
        if (const auto address = hunter_address_in(announcements_.back()))
            hunter_address_ = address;
        return;
    }
    complaint_ = complaint{{record.function, record.line}, record.message};
}

void frame_fates::begin_frame(const captured_frame& frame) {
    first_time_ns = frames == 0 ? frame.time_ns : std::min(first_time_ns, frame.time_ns);
    last_time_ns = std::max(last_time_ns, frame.time_ns);
    ++frames;
    cut += frame.cut ? 1 : 0;
    traffic_ = traffic_of(frame.bytes);
    if (traffic_ == traffic::ncom_or_rcom)
        note_step(frame.time_ns);
}

void frame_fates::end_frame(const captured_frame& frame, std::size_t decoded_packages) {
    for (const std::string& message : announcements_)
        ++identifications.try_emplace(message, identification{frame.time_ns, 0})
              .first->second.count;
    announcements_.clear();

    if (decoded_packages > 0) {
        ++decoded;
        note_remark(decoded_in_part);
    } else if (traffic_ == traffic::not_ipv4) {
        ++not_ipv4;
    } else if (traffic_ == traffic::not_udp) {
        ++not_udp;
    } else if (traffic_ == traffic::other_port) {
        ++other_ports;
    } else if (complaint_) {
        note_remark(refusals);
    } else {
        // The decoder names a reason for everything but the RCOM types that it skips by design.
        ++ignored_rcom;
    }
    complaint_.reset();
}

void frame_fates::note_step(std::uint64_t time_ns) {
    if (time_ns < latest_datagram_ns_) {
        constexpr std::size_t most = 100;
        if (first_steps_back.size() < most)
            first_steps_back.push_back({latest_datagram_ns_, time_ns});
        ++steps_back;
        hunter_address_.reset();
    }
    latest_datagram_ns_ = time_ns;
}

void frame_fates::note_remark(remarks& list) {
    if (complaint_)
        ++list.try_emplace(complaint_->place, remark{complaint_->message, 0}).first->second.count;
}

} // namespace rtrange
