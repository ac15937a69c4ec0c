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

status_data ncom_status_data(std::uint8_t channel, std::int32_t gps_minutes) {
    wire_writer writer;
    switch (channel) {
    case 0:
        return padded(writer.s32(gps_minutes).u8(11).u8(5).u8(5).u8(5));
    case 2:
        return padded(writer.u16(4711).u16(815).u16(3).u16(1));
    case 3:
        return padded(writer.u16(12).u16(14).u16(21).u8(3).u8(0));
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
        return padded(writer.u16(130));
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
        return padded(writer.s32(scaled(target.altitude, 1000.0))
                          .s32(scaled(degrees(pair.target.heading), 1e7)));
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
