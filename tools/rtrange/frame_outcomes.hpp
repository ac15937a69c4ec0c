// What became of the frames of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tools/rtrange/captures/captured_frame.hpp"
#include "tools/rtrange/tables/received_packet.hpp"
#include "tools/rtrange/tables/table_view.hpp"
#include "tools/rtrange/unit_identification.hpp"
#include "zel/log.h"

namespace rtrange {

/// What became of one frame.
enum class frame_outcome { decoded, foreign, ignored, refused };

/// Counts frames by outcome, and collects what the decoder logs about them.
class frame_outcomes {
public:
    /// Starts a frame, before it is decoded.
    void begin_frame(const captured_frame& frame);

    /// The time since the last NCOM or RCOM datagram, in nanoseconds, if the current frame is
    /// another one; otherwise 0.
    std::uint64_t gap_ns() const { return gap_ns_; }

    /// Whether the current frame made the decoder reset itself, as it does when time runs
    /// backwards.
    bool is_step_back() const { return is_step_back_; }

    /// Notes that a new decoder was started before the current frame.
    void restart();

    /// Takes a log record about the current frame.
    void log(const zel_log_info_t& record);

    /// Completes the current frame; `packet` is the decoded packet, if there is one.
    frame_outcome end_frame(const captured_frame& frame,
                            const std::optional<received_packet>& packet);

    /// Why the last frame was refused, in plain words. Valid as long as the outcomes.
    const char* refusal() const { return refusal_; }

    /// A fault of one or more frames.
    struct remark {
        std::string message; ///< of the first such frame, in plain words
        std::uint64_t count;
        std::uint64_t first_frame; ///< number of that frame in its capture
        std::string capture;       ///< name of that capture
    };

    std::uint64_t frames = 0;
    std::uint64_t decoded = 0;
    std::uint64_t not_ipv4 = 0;
    std::uint64_t not_udp = 0;
    std::uint64_t other_ports = 0;
    std::uint64_t ignored_rcom = 0;  ///< RCOM packets of a type without decoded content
    std::uint64_t cut = 0;           ///< frames of which the capture holds only the beginning
    std::uint64_t refused_whole = 0; ///< refused frames that are not among these

    // Frames that were not plain Ethernet frames when they were captured:
    std::uint64_t with_vlan_tag = 0;
    std::uint64_t linux_cooked = 0;
    std::uint64_t raw_ip = 0;

    /// NCOM and RCOM datagrams that are earlier than their predecessor; each restarts the decoder.
    std::uint64_t steps_back = 0;
    struct time_step {
        std::uint64_t from_ns; ///< of the predecessor
        std::uint64_t to_ns;
    };
    std::vector<time_step> first_steps_back; ///< at most 100

    /// Gaps after which a new decoder was started.
    std::uint64_t restarts = 0;
    std::vector<time_step> first_restarts; ///< at most 100

    /// Remarks by message; beyond a number of messages, by the source line that logged them.
    using remark_key = std::pair<std::string, std::uint32_t>;
    using remarks = std::map<remark_key, remark>;
    remarks refusals;        ///< about frames that were refused
    remarks decoded_in_part; ///< about frames that were decoded except for a part
    std::uint64_t first_time_ns = 0;
    std::uint64_t last_time_ns = 0;

    struct identification {
        std::uint64_t time_ns; ///< of the first frame that named the address
        std::uint64_t count;   ///< more than 1 after restarts and when addresses alternate
    };
    std::map<identified_unit, identification> identifications;

    /// The addresses by which the decoder knows the units. Empty until a unit is identified, and
    /// again after each restart of the decoder.
    const known_addresses& addresses() const { return addresses_; }

private:
    enum class traffic { not_ipv4, not_udp, other_port, ncom_or_rcom, too_short };

    struct complaint {
        remark_key source_line;
        std::string message;
    };

    static traffic traffic_of(std::span<const std::uint8_t> frame);
    void count_link_layer(const captured_frame& frame);
    frame_outcome count(const captured_frame& frame, const std::optional<received_packet>& packet);
    void check_time(std::uint64_t time_ns);
    void add_step(std::uint64_t& count, std::vector<time_step>& list) const;
    void count_complaint(const captured_frame& frame, remarks& list);
    void count_faults(const captured_frame& frame, const received_packet& packet);
    static void add_remark(const captured_frame& frame, const remark_key& key,
                           const std::string& message, remarks& list);
    const char* stored_reason(const std::string& reason);

    std::uint64_t latest_datagram_ns_ = 0;
    known_addresses addresses_{};
    std::set<std::string> reasons_; ///< at most 1000
    const char* refusal_ = "";
    // Of the current frame:
    std::uint64_t gap_ns_ = 0;
    bool is_step_back_ = false;
    time_step step_{};
    traffic traffic_ = traffic::too_short;
    std::optional<complaint> complaint_;
    std::vector<identified_unit> identified_;
};

} // namespace rtrange
