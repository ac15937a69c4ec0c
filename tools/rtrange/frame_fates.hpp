// What became of the frames of a capture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tools/rtrange/captures/captured_frame.hpp"
#include "zel/log.h"

namespace rtrange {

/// Counts frames by their fate.
class frame_fates {
public:
    /// Notes a log record of the frame in hand.
    void log(const zel_log_info_t& record);

    /// Begins a frame, before it is decoded.
    void begin_frame(const captured_frame& frame);

    /// Ends the frame in hand, which yielded this many decoded packages.
    void end_frame(const captured_frame& frame, std::size_t decoded_packages);

    struct remark {
        std::string message; ///< of the first such frame
        std::uint64_t count;
    };

    std::uint64_t frames = 0;
    std::uint64_t decoded = 0;
    std::uint64_t not_ipv4 = 0;
    std::uint64_t not_udp = 0;
    std::uint64_t other_ports = 0;
    std::uint64_t ignored_rcom = 0; ///< RCOM packets of a type that carries nothing to decode
    std::uint64_t cut = 0;          ///< frames that the recording has shortened

    /// NCOM and RCOM datagrams earlier than the one before; each restarts the decoder.
    std::uint64_t steps_back = 0;
    struct step_back {
        std::uint64_t from_ns; ///< of the datagram before
        std::uint64_t to_ns;
    };
    std::vector<step_back> first_steps_back; ///< as many as somebody might want to read

    /// Frames by the place in the decoder that found fault with them.
    using remarks = std::map<std::pair<std::string, std::uint32_t>, remark>;
    remarks refusals;        ///< of frames that were dropped
    remarks decoded_in_part; ///< of frames that were decoded all the same
    std::uint64_t first_time_ns = 0;
    std::uint64_t last_time_ns = 0;

    struct identification {
        std::uint64_t time_ns; ///< of the first frame that named the address
        std::uint64_t count;   ///< a unit that changes its address to and fro is named often
    };
    /// Units identified, by the decoder's message: which unit, and its address.
    std::map<std::string, identification> identifications;

    /// The address by which the decoder knows the hunter, as its bytes stand on the wire. Nothing
    /// before the hunter was identified, and after each restart of the decoder again.
    std::optional<std::uint32_t> hunter_address() const { return hunter_address_; }

private:
    enum class traffic { not_ipv4, not_udp, other_port, ncom_or_rcom, too_short };

    struct complaint {
        std::pair<std::string, std::uint32_t> place;
        std::string message;
    };

    static traffic traffic_of(std::span<const std::uint8_t> frame);
    void note_step(std::uint64_t time_ns);
    void note_remark(remarks& list);

    traffic traffic_ = traffic::too_short; ///< of the frame in hand
    std::uint64_t latest_datagram_ns_ = 0;
    std::optional<std::uint32_t> hunter_address_;
    std::optional<complaint> complaint_;
    std::vector<std::string> announcements_;
};

} // namespace rtrange
