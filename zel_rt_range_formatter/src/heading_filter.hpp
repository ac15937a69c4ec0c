// Suppression of heading jumps.
#pragma once

#include <cstdint>

namespace zel::toolbox::rt_range {

/// One filter serves all units, so that their headings meet in it; angles in degrees. Of all
/// earlier headings only the first one since the last reset is ever looked at.
class heading_filter {
public:
    /// The heading to store for a packet whose wire heading is `heading`; `stored` is the one that
    /// the record holds so far.
    double filter(double heading, double stored);

private:
    double second(double heading);
    double later(double heading, double stored);

    double value_ = 0.0;      ///< last accepted heading
    std::uint32_t whole_ = 0; ///< whole-number part, set by the second heading alone
    double first_ = 0.0;      ///< first heading since the last reset
    std::uint8_t seen_ = 0;   ///< headings since the last reset, counted up to two
};

} // namespace zel::toolbox::rt_range
