// Frames as they come in on a network interface.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tools/rtrange/captures/captured_frame.hpp"

struct pcap;

namespace rtrange {

/// Captures all frames of an Ethernet interface, its own and foreign ones.
class live_capture {
public:
    /// Throws failure when the interface cannot be captured from.
    explicit live_capture(const std::string& name);

    /// The next frame; nothing when there is none at the moment, after a short wait. Throws
    /// broken_capture when there won't be another, for example because the interface is gone.
    std::optional<captured_frame> next();

    const std::string& interface_name() const { return interface_; }

    /// Frames that came in and were lost, because they weren't fetched in time.
    std::uint64_t lost() const;

private:
    struct closer {
        void operator()(pcap* capture) const;
    };

    std::string interface_;
    std::unique_ptr<pcap, closer> capture_;
    std::uint64_t nanoseconds_per_tick_ = 1000;
};

} // namespace rtrange
