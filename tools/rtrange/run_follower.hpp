// Following a run while it is decoded.
#pragma once

#include "tools/rtrange/captures/captured_frame.hpp"

namespace rtrange {

/// Is called for each frame, by the thread that decodes.
class run_follower {
public:
    run_follower() = default;
    run_follower(const run_follower&) = delete;
    run_follower& operator=(const run_follower&) = delete;
    virtual ~run_follower() = default;

    /// Returns when it is time to decode the frame, or when the user interrupts.
    virtual void wait_for(const captured_frame& frame) = 0;

    /// Takes note that the rows of the frame have been written.
    virtual void finish(const captured_frame& frame) = 0;

    /// Whether it is a fault when the user interrupts a capture before its end.
    virtual bool needs_all_frames() const = 0;
};

} // namespace rtrange
