// What became of the frames of a capture.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "zel/log.h"

namespace rtrange {

/// Counts frames by their fate.
class frame_fates {
public:
    /// Notes a log record of the frame in hand.
    void log(const zel_log_info_t& record);

    /// Ends the frame in hand, which yielded this many decoded packages.
    void end_frame(std::span<const std::uint8_t> frame, std::uint64_t time_ns,
                   std::size_t decoded_packages);

    struct refusal {
        std::string message; ///< of the first frame refused here
        std::uint64_t count;
    };

    std::uint64_t frames = 0;
    std::uint64_t decoded = 0;
    std::uint64_t not_ipv4 = 0;
    std::uint64_t not_udp = 0;
    std::uint64_t other_ports = 0;
    std::uint64_t ignored_rcom = 0; ///< RCOM packets of a type that carries nothing to decode
    std::uint64_t refused = 0;
    /// Refused frames by the place in the decoder that refused them.
    std::map<std::pair<std::string, std::uint32_t>, refusal> refusals;
    std::uint64_t first_time_ns = 0;
    std::uint64_t last_time_ns = 0;

    struct identification {
        std::uint64_t time_ns; ///< of the first frame that named the address
        std::uint64_t count;   ///< a unit that changes its address to and fro is named often
    };
    /// Units identified, by the decoder's message: which unit, and its address.
    std::map<std::string, identification> identifications;

private:
    struct complaint {
        std::pair<std::string, std::uint32_t> place;
        std::string message;
    };

    void refuse();

    std::optional<complaint> complaint_;
    std::vector<std::string> announcements_;
};

} // namespace rtrange
