// Limits the log records about traffic that is not for the decoder.
#pragma once

#include <cstdint>

namespace zel::toolbox::rt_range {

/// Allows a log record for the first of every hundred frames of one kind. Call `is_due`, log, then
/// call `count`: if the host fails to log, the next frame is logged instead.
class foreign_traffic_throttle {
public:
    /// Whether the current frame is to be logged.
    bool is_due() const { return frames_ == 0; }

    /// Counts the current frame.
    void count() { frames_ = (frames_ + 1) % period; }

private:
    static constexpr std::uint32_t period = 100;

    std::uint32_t frames_ = 0;
};

} // namespace zel::toolbox::rt_range
