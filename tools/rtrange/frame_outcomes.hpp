// What became of the frames of a run.
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
#include "tools/rtrange/unit_identification.hpp"
#include "zel/log.h"

namespace rtrange {

/// Counts frames by outcome, and collects what the decoder logs about them.
class frame_outcomes {
public:
    /// Starts a frame, before it is decoded.
    void begin_frame(const captured_frame& frame);

    /// Takes a log record about the current frame.
    void log(const zel_log_info_t& record);

    /// Completes the current frame, from which the decoder made this many packages.
    void end_frame(const captured_frame& frame, std::size_t decoded_packages);

    /// A fault that the decoder logged for one or more frames.
    struct remark {
        std::string message; ///< of the first such frame
        std::uint64_t count;
    };

    std::uint64_t frames = 0;
    std::uint64_t decoded = 0;
    std::uint64_t not_ipv4 = 0;
    std::uint64_t not_udp = 0;
    std::uint64_t other_ports = 0;
    std::uint64_t ignored_rcom = 0; ///< RCOM packets of a type without decoded content
    std::uint64_t cut = 0;          ///< frames of which the capture holds only the beginning

    /// NCOM and RCOM datagrams that are earlier than their predecessor; each restarts the decoder.
    std::uint64_t steps_back = 0;
    struct step_back {
        std::uint64_t from_ns; ///< of the predecessor
        std::uint64_t to_ns;
    };
    std::vector<step_back> first_steps_back; ///< at most 100

    /// Remarks by the source line that logged them.
    using remarks = std::map<std::pair<std::string, std::uint32_t>, remark>;
    remarks refusals;        ///< about frames that were refused
    remarks decoded_in_part; ///< about frames that were decoded except for a part
    std::uint64_t first_time_ns = 0;
    std::uint64_t last_time_ns = 0;

    struct identification {
        std::uint64_t time_ns; ///< of the first frame that named the address
        std::uint64_t count;   ///< more than 1 after restarts and when addresses alternate
    };
    std::map<identified_unit, identification> identifications;

    /// The address by which the decoder knows the hunter. Empty until the hunter is identified, and
    /// again after each restart of the decoder.
    std::optional<std::uint32_t> hunter_address() const { return hunter_address_; }

private:
    enum class traffic { not_ipv4, not_udp, other_port, ncom_or_rcom, too_short };

    struct complaint {
        std::pair<std::string, std::uint32_t> source_line;
        std::string message;
    };

    static traffic traffic_of(std::span<const std::uint8_t> frame);
    void check_for_step_back(std::uint64_t time_ns);
    void count_complaint(remarks& list);

    std::uint64_t latest_datagram_ns_ = 0;
    std::optional<std::uint32_t> hunter_address_;
    // Of the current frame:
    traffic traffic_ = traffic::too_short;
    std::optional<complaint> complaint_;
    std::vector<identified_unit> identified_;
};

} // namespace rtrange
