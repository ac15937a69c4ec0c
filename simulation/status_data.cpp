#include "simulation/status_data.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "simulation/wire_writer.hpp"

namespace zel::simulation {
namespace {

constexpr std::array<std::uint8_t, 17> ncom_channels{0,  16, 4,  3,  5,  2,  12, 13, 14,
                                                     15, 20, 26, 75, 76, 77, 1,  23};
constexpr std::array<std::uint8_t, 9> lane_channels{0, 1, 2, 6, 7, 8, 9, 10, 15};
constexpr std::uint8_t rcom_channel_count = 22;
constexpr std::uint8_t address_channel = 9;

/// The first eight bytes written, padded with zeros.
status_data padded(const wire_writer& writer) {
    status_data data{};
    std::copy_n(writer.written().begin(), std::min(data.size(), writer.written().size()),
                data.begin());
    return data;
}

double degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

/// A heading from -pi to pi in units of 1e-7 degrees from 0 to 360 degrees.
std::uint32_t unsigned_heading(double heading) {
    constexpr std::int64_t full_turn = 3'600'000'000;
    const std::int64_t value = std::llround(degrees(heading) * 1e7);
    return static_cast<std::uint32_t>((value + full_turn) % full_turn);
}

std::int32_t scaled(double value, double factor) {
    return static_cast<std::int32_t>(std::lround(value * factor));
}

} // namespace

std::uint8_t ncom_channel_in_turn(std::uint64_t n) {
    return ncom_channels[n % ncom_channels.size()];
}

std::uint8_t rcom_channel_in_turn(std::uint64_t n) {
    return static_cast<std::uint8_t>((address_channel + n) % rcom_channel_count);
}

std::uint8_t lane_channel_in_turn(std::uint64_t n) {
    return lane_channels[n % lane_channels.size()];
}

satellite_fix satellite_fix_of(std::size_t unit, double time) {
    constexpr double period = 60.0;      // s
    constexpr double outage_start = 8.0; // s, of the hunter; three seconds later for each target
    constexpr double outage_end = 18.0;
    constexpr double float_start = 12.0;
    constexpr double float_end = 20.0;
    const double turn = 2.0 * std::numbers::pi * (time / 100.0 + static_cast<double>(unit) / 5.0);
    const double shifted = time - 3.0 * static_cast<double>(unit);
    const double phase = shifted - period * std::floor(shifted / period);
    const bool is_float = phase >= float_start && phase < float_end;
    const bool outage = phase >= outage_start && phase < outage_end;
    return {
        .satellites = static_cast<std::uint8_t>(std::lround(11.5 + 2.9 * std::sin(turn))),
        .position_mode = static_cast<std::uint8_t>(is_float ? 5 : 6),
        .position_accuracy = is_float ? 0.4 : 0.02,
        .differential_age = outage ? 1.0 + phase - outage_start : 1.0,
    };
}

status_data ncom_status_data(std::uint8_t channel, std::int32_t gps_minutes,
                             const satellite_fix& fix) {
    const auto millimetres = [](double metres) {
        return static_cast<std::uint16_t>(scaled(metres, 1000.0));
    };
    wire_writer writer;
    switch (channel) {
    case 0:
        return padded(writer.s32(gps_minutes).u8(fix.satellites).u8(fix.position_mode).u8(5).u8(6));
    case 2:
        return padded(writer.u16(4711).u16(815).u16(3).u16(1));
    case 3:
        return padded(writer.u16(millimetres(fix.position_accuracy))
                          .u16(millimetres(fix.position_accuracy))
                          .u16(millimetres(1.5 * fix.position_accuracy))
                          .u8(3)
                          .u8(0));
    case 4:
        return padded(writer.s16(8).s16(9).s16(11).u8(3).u8(0));
    case 5:
        return padded(writer.u16(52).u16(31).u16(33).u8(3));
    case 12:
        return padded(writer.s16(412).s16(-38).s16(-1240).u8(4));
    case 13:
        return padded(writer.s16(-15).s16(22).s16(1980).u8(4));
    case 14:
        return padded(writer.u16(31).u16(32).u16(40).u8(4));
    case 15:
        return padded(writer.u16(10).u16(12).u16(2).u8(4));
    case 16: {
        constexpr std::uint8_t valid_18_seconds =
            0xDD; // -18 in the upper seven bits, the valid bit below
        return padded(writer.u32(0).u16(0).u8(0).u8(valid_18_seconds));
    }
    case 20:
        return padded(writer.u16(static_cast<std::uint16_t>(scaled(fix.differential_age, 100.0))));
    case 26:
        return padded(writer.s16(-850).u16(120).u16(310).u8(2));
    default:
        return padded(writer.u16(1000).u16(2000).u16(3000).u16(channel));
    }
}

status_data rcom_status_data(std::uint8_t channel, const vehicle_pair& pair) {
    const geographic_position hunter = scenario::geographic(pair.hunter);
    const geographic_position target = scenario::geographic(pair.target);
    wire_writer writer;
    switch (channel) {
    case 0:
        return padded(writer.s32(pair.gps_minutes).u8(1).u8(2).u16(40));
    case 5:
        return padded(writer.u16(35));
    case 8:
        return padded(writer.s32(scaled(degrees(target.latitude), 1e7))
                          .s32(scaled(degrees(target.longitude), 1e7)));
    case address_channel:
        return padded(writer.append(pair.hunter_address).append(pair.target_address));
    case 10:
        return padded(
            writer.s32(scaled(target.altitude, 1000.0)).u32(unsigned_heading(pair.target.heading)));
    case 11:
        return padded(writer.s32(scaled(degrees(hunter.latitude), 1e7))
                          .s32(scaled(degrees(hunter.longitude), 1e7)));
    case 12:
        return padded(writer.s32(scaled(hunter.altitude, 1000.0))
                          .s32(scaled(degrees(pair.hunter.heading), 1e7)));
    case 13:
        return padded(writer.s24(2100).s24(-40).s16(650));
    case 14:
        return padded(writer.s24(-1900).s24(30).s16(640));
    case 18:
    case 19:
        return padded(writer.f32(4.6F).f32(1.9F));
    default:
        return padded(writer.u16(100).u16(200).u16(300).u16(channel));
    }
}

status_data lane_status_data(std::uint8_t channel, const vehicle_motion& hunter) {
    const geographic_position position = scenario::geographic(hunter);
    wire_writer writer;
    switch (channel) {
    case 0:
        return padded(writer.s32(scaled(degrees(position.latitude), 1e7))
                          .s32(scaled(degrees(position.longitude), 1e7)));
    case 8:
    case 9:
    case 10:
        return padded(writer.s24(1200).s24(-900).s16(350));
    default:
        return padded(writer.u16(10).u16(20).u16(30).u16(channel));
    }
}

} // namespace zel::simulation
