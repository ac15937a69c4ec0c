// The filter of NCOM headings.
#pragma once

#include <cstdint>

namespace zel::toolbox::rt_range {

/// Suppresses heading jumps (deg). Deliberate: one filter serves all units, it accepts no step of 5
/// degrees or more after the second heading, and it refuses the whole degree that the second
/// heading has set. Of the history of headings only the first one since the last reset is needed.
class heading_filter {
public:
    /// The heading to store for a packet with the heading `heading`.
    double filter(double heading);

private:
    double second(double heading);
    double later(double heading);

    double value_ = 0.0;      ///< last accepted heading
    std::uint32_t whole_ = 0; ///< whole-number part, set by the second heading only
    double first_ = 0.0;      ///< first heading since the last reset
    std::uint8_t seen_ = 0;   ///< headings since the last reset, counted up to two
};

} // namespace zel::toolbox::rt_range
