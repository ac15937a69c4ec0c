#include "tools/rtrange/frame_fates.hpp"

#include <algorithm>

namespace rtrange {
namespace {

constexpr std::uint32_t notable_level = 400;

enum class traffic { not_ipv4, not_udp, other_port, ncom_or_rcom };

/// What kind of traffic a frame is, by the fields that the decoder goes by; a frame too short to
/// tell counts as the decoder's own.
traffic traffic_of(std::span<const std::uint8_t> frame) {
    if (frame.size() >= 14 && (frame[12] != 0x08 || frame[13] != 0x00))
        return traffic::not_ipv4;
    if (frame.size() >= 34 && frame[23] != 17)
        return traffic::not_udp;
    if (frame.size() < 42)
        return traffic::ncom_or_rcom;
    const int port = frame[36] << 8 | frame[37];
    return port == 3000 || port == 3003 ? traffic::ncom_or_rcom : traffic::other_port;
}

} // namespace

void frame_fates::log(const zel_log_info_t& record) {
    if (record.level >= notable_level) {
        announcements_.emplace_back(record.message);
        return;
    }
    complaint_ = complaint{{record.function, record.line}, record.message};
}

void frame_fates::end_frame(std::span<const std::uint8_t> frame, std::uint64_t time_ns,
                            std::size_t decoded_packages) {
    first_time_ns = frames == 0 ? time_ns : std::min(first_time_ns, time_ns);
    last_time_ns = std::max(last_time_ns, time_ns);
    ++frames;
    for (const std::string& message : announcements_)
        ++identifications.try_emplace(message, identification{time_ns, 0}).first->second.count;
    announcements_.clear();
    if (decoded_packages > 0) {
        ++decoded;
    } else {
        switch (traffic_of(frame)) {
        case traffic::not_ipv4:
            ++not_ipv4;
            break;
        case traffic::not_udp:
            ++not_udp;
            break;
        case traffic::other_port:
            ++other_ports;
            break;
        case traffic::ncom_or_rcom:
            refuse();
            break;
        }
    }
    complaint_.reset();
}

/// The decoder names a reason for everything but the RCOM types that it skips by design.
void frame_fates::refuse() {
    if (!complaint_) {
        ++ignored_rcom;
        return;
    }
    ++refused;
    ++refusals.try_emplace(complaint_->place, refusal{complaint_->message, 0}).first->second.count;
}

} // namespace rtrange
