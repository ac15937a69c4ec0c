// The speed at which captures are shown.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>

#include "tools/rtrange/captures/captured_frame.hpp"

namespace rtrange {

/// Lets the time of captures pass at a multiple of their own speed.
class replay_clock {
public:
    /// With a speed of 0, no frame is waited for.
    explicit replay_clock(double speed) : speed_(speed) {}

    /// Returns when the frame is due, or when the user interrupts. The clock starts with the first
    /// frame of each capture, and again when the time of captures runs backwards.
    void wait_for(const captured_frame& frame);

    /// The capture time that has been reached, in nanoseconds since 1970. 0 before the first frame.
    /// May be called by any thread.
    std::uint64_t now_ns() const;

private:
    using clock = std::chrono::steady_clock;

    clock::time_point due(std::uint64_t time_ns) const;

    double speed_;
    mutable std::mutex mutex_;
    clock::time_point start_;
    std::uint64_t start_ns_ = 0; ///< capture time at `start_`
    std::uint64_t last_ns_ = 0;  ///< of the last frame that was due
    std::uint64_t next_ns_ = 0;  ///< of the frame that is waited for
};

} // namespace rtrange
