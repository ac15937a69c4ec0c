// Conversions between units of measure.
#pragma once

namespace zel::toolbox::rt_range {

/// Single-precision pi widened to double. Recordings are compared byte for byte, so no conversion
/// may use a more exact value, nor fold it with 180 into one factor.
inline constexpr double pi = 3.1415927410125732;

constexpr double to_degrees(double radians) {
    return radians * 180.0 / pi;
}

constexpr double to_radians(double degrees) {
    return degrees * pi / 180.0;
}

inline constexpr double kmh_per_mps = 3.6;

} // namespace zel::toolbox::rt_range
