// Values that a measured row takes from the packet instead of the record.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace rtrange {

/// What an NCOM packet says of the motion of its unit, with the axes and signs of the record.
struct measured_motion {
    double heading;                      ///< deg, 0 to 360, from north over east
    double velocity_forward;             ///< m/s
    double velocity_left;                ///< m/s
    std::array<double, 3> accelerations; ///< m/s²
    std::array<double, 3> rates;         ///< deg/s
    double pitch;                        ///< deg
    double roll;                         ///< deg
};

/// The motion in the 72 bytes of an NCOM packet.
measured_motion motion_in(const std::uint8_t* ncom);

/// Geographic position in degrees. The record converts radians with a rounded pi, which moves
/// positions by up to half a metre.
struct geographic_position {
    double latitude;
    double longitude;
};

/// The position in the 72 bytes of an NCOM packet.
geographic_position position_in(const std::uint8_t* ncom);

/// The angle brought into 0 to 360.
double full_circle(double degrees);

/// The difference `first - second` of two angles, -180 to 180.
double angle_between(double first, double second);

/// Whether one of the three checksums of an NCOM packet is wrong.
bool has_wrong_checksum(const std::uint8_t* ncom);

/// Follows the GPS time of one sender.
class gps_clock {
public:
    /// Takes the next NCOM packet of the sender.
    void follow(const std::uint8_t* ncom);

    /// Minutes since 1980-01-06. Unknown before the first packet with status channel 0.
    std::optional<std::int32_t> minutes() const { return minutes_; }

    /// Microseconds since 1970 without leap seconds, so 18 s ahead of UTC since 2017. Unknown
    /// before the first packet with status channel 0.
    std::optional<std::int64_t> time_us() const;

private:
    std::optional<std::int32_t> minutes_;
    std::uint32_t time_in_minute_ms_ = 0;
};

} // namespace rtrange
