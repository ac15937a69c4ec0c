// Live capture from a network interface.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tools/rtrange/captures/captured_frame.hpp"
#include "tools/rtrange/captures/link_layer.hpp"

struct pcap;

namespace rtrange {

/// Captures all frames that a network interface, or "any" for all of them, sends or receives.
class live_capture {
public:
    /// Throws failure when the interface cannot be captured from.
    explicit live_capture(const std::string& name);

    /// The next frame; nothing when none arrives within 10 ms. Throws broken_capture when capturing
    /// fails, for example because the interface was removed.
    std::optional<captured_frame> next();

    const std::string& interface_name() const { return interface_; }

    /// Frames that were lost because they were not read in time.
    std::uint64_t lost() const;

private:
    struct closer {
        void operator()(pcap* capture) const;
    };

    std::string interface_;
    std::unique_ptr<pcap, closer> capture_;
    frame_unwrapper unwrapper_{link_layer::ethernet};
    std::uint64_t nanoseconds_per_tick_ = 1000;
    std::uint64_t frames_ = 0;
};

} // namespace rtrange
