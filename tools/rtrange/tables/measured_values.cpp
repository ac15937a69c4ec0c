#include "tools/rtrange/tables/measured_values.hpp"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>

#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

double degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

/// A three-byte field, in units of 1 / divisor.
double scaled(const std::uint8_t* bytes, double divisor) {
    return static_cast<double>(read_signed(bytes, 3)) / divisor;
}

std::uint8_t sum(const std::uint8_t* begin, const std::uint8_t* end) {
    return static_cast<std::uint8_t>(std::accumulate(begin, end, 0U));
}

/// Whether each checksum is the sum of all bytes between the sync byte and itself.
bool sums_the_packet(const std::uint8_t* ncom) {
    const auto is_right = [ncom](std::size_t checksum) {
        return sum(ncom + 1, ncom + checksum) == ncom[checksum];
    };
    return is_right(ncom_byte::checksum_1) && is_right(ncom_byte::checksum_2) &&
           is_right(ncom_byte::checksum_3);
}

/// Whether each checksum is the sum of the bytes from the previous one, or the sync byte, on.
bool sums_its_parts(const std::uint8_t* ncom) {
    const auto is_right = [ncom](std::size_t begin, std::size_t checksum) {
        return sum(ncom + begin, ncom + checksum) == ncom[checksum];
    };
    return is_right(1, ncom_byte::checksum_1) &&
           is_right(ncom_byte::checksum_1, ncom_byte::checksum_2) &&
           is_right(ncom_byte::checksum_2, ncom_byte::checksum_3);
}

} // namespace

measured_motion motion_in(const std::uint8_t* ncom) {
    constexpr double units_per_radian = 1e6;
    constexpr double units_per_mps = 1e4;
    const double heading = scaled(ncom + ncom_byte::heading, units_per_radian);
    const double north = scaled(ncom + ncom_byte::velocities, units_per_mps);
    const double east = scaled(ncom + ncom_byte::velocities + 3, units_per_mps);
    const double sine = std::sin(heading);
    const double cosine = std::cos(heading);
    const auto acceleration = [ncom](std::size_t axis) {
        return scaled(ncom + ncom_byte::accelerations + 3 * axis, 1e4);
    };
    const auto rate = [ncom](std::size_t axis) {
        return to_degrees(scaled(ncom + ncom_byte::rates + 3 * axis, 1e5));
    };
    return {full_circle(degrees(heading)),
            north * cosine + east * sine,
            north * sine - east * cosine,
            {acceleration(0), -acceleration(1), -acceleration(2)},
            {rate(0), -rate(1), -rate(2)},
            -to_degrees(scaled(ncom + ncom_byte::pitch, units_per_radian)),
            to_degrees(scaled(ncom + ncom_byte::roll, units_per_radian))};
}

geographic_position position_in(const std::uint8_t* ncom) {
    return {degrees(read_float(ncom + ncom_byte::latitude, 8)),
            degrees(read_float(ncom + ncom_byte::longitude, 8))};
}

double full_circle(double degrees) {
    const double angle = std::fmod(degrees, 360.0);
    return angle < 0.0 ? angle + 360.0 : angle;
}

double angle_between(double first, double second) {
    return std::remainder(first - second, 360.0);
}

bool has_wrong_checksum(const std::uint8_t* ncom) {
    return !sums_the_packet(ncom) && !sums_its_parts(ncom); // senders do either
}

void gps_clock::follow(const std::uint8_t* ncom) {
    // A small step back is a packet that was overtaken by another one.
    constexpr std::uint32_t half_a_minute_ms = 30'000;
    const std::uint32_t time_ms = read_unsigned(ncom + ncom_byte::time, 2);
    if (ncom[ncom_byte::status_channel] == 0)
        minutes_ = read_signed(ncom + ncom_byte::status_data, 4);
    else if (minutes_ && time_ms + half_a_minute_ms < time_in_minute_ms_)
        minutes_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(*minutes_) + 1);
    time_in_minute_ms_ = time_ms;
}

std::optional<std::int64_t> gps_clock::time_us() const {
    constexpr std::int64_t gps_epoch_us = 315'964'800'000'000; // 1980-01-06
    constexpr std::int64_t us_per_minute = 60'000'000;
    constexpr std::int64_t us_per_ms = 1000;
    if (!minutes_)
        return std::nullopt;
    return gps_epoch_us + *minutes_ * us_per_minute + time_in_minute_ms_ * us_per_ms;
}

} // namespace rtrange
