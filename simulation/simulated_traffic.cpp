#include "simulation/simulated_traffic.hpp"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "simulation/ncom_packet.hpp"
#include "simulation/rcom_packets.hpp"
#include "simulation/status_data.hpp"

namespace zel::simulation {
namespace {

constexpr std::uint16_t ncom_port = 3000;
constexpr std::uint16_t rcom_port = 3003;
constexpr ip_address broadcast{195, 0, 0, 255};
constexpr std::uint64_t lane_period = 5;
constexpr std::uint64_t foreign_period = 50;

/// 2026-01-05 10:00:00 UTC in GPS time, which is 18 s ahead.
constexpr std::int64_t start_gps_ms = 1'451'642'418'000;

std::int32_t scaled(double value, double factor) {
    return static_cast<std::int32_t>(std::lround(value * factor));
}

std::int16_t scaled_16(double value, double factor) {
    return static_cast<std::int16_t>(std::lround(value * factor));
}

/// A heading from -pi to pi, as an angle from 0 to 2 pi.
double unsigned_heading(double heading) {
    return heading < 0.0 ? heading + 2.0 * std::numbers::pi : heading;
}

struct gps_time {
    std::int32_t minutes;
    std::uint16_t ms;
};

gps_time gps_time_at(double time) {
    const std::int64_t ms = start_gps_ms + std::llround(time * 1000.0);
    return {static_cast<std::int32_t>(ms / 60000), static_cast<std::uint16_t>(ms % 60000)};
}

ncom_packet ncom_of(const scenario& vehicles, std::size_t unit, double time, std::uint64_t n) {
    const vehicle_motion motion = vehicles.unit(unit, time);
    const geographic_position position = scenario::geographic(motion);
    const double c = std::cos(motion.heading);
    const double s = std::sin(motion.heading);
    const double forward = c * motion.acceleration_north + s * motion.acceleration_east;
    const double right = c * motion.acceleration_east - s * motion.acceleration_north;
    const gps_time now = gps_time_at(time);
    ncom_packet packet;
    packet.time_in_minute_ms = now.ms;
    packet.acceleration = {scaled(forward, 1e4), scaled(right, 1e4), scaled(-9.81, 1e4)};
    packet.rate = {0, 0, scaled(motion.yaw_rate, 1e5)};
    packet.latitude = position.latitude;
    packet.longitude = position.longitude;
    packet.altitude = static_cast<float>(position.altitude);
    packet.velocity = {scaled(motion.velocity_north, 1e4), scaled(motion.velocity_east, 1e4), 0};
    packet.heading = scaled(motion.heading, 1e6);
    packet.status_channel = ncom_channel_in_turn(n);
    packet.status_data =
        ncom_status_data(packet.status_channel, now.minutes, satellite_fix_of(unit, time));
    return packet;
}

/// Makes a packet of a unit that is initialising and reports no heading.
void make_initialising(ncom_packet& packet) {
    constexpr std::uint8_t initialising = 3;
    packet.navigation_status = initialising;
    packet.heading = 0;
}

extended_range_packet range_of(const scenario& vehicles, std::size_t target, double time,
                               std::uint64_t n) {
    const relative_motion relative = vehicles.target(target, time);
    const vehicle_pair pair{unit_addresses[0], unit_addresses[target], vehicles.unit(0, time),
                            vehicles.unit(target, time), gps_time_at(time).minutes};
    const double speed = std::hypot(pair.hunter.velocity_north, pair.hunter.velocity_east);
    extended_range_packet packet;
    packet.word_4 = gps_time_at(time).ms;
    packet.target_number = static_cast<std::uint8_t>(target);
    packet.range_lateral = scaled(relative.range_lateral, 1e3);
    packet.range_longitudinal = scaled(relative.range_longitudinal, 1e3);
    packet.range_rate_lateral = scaled_16(relative.range_rate_lateral, 1e2);
    packet.range_rate_longitudinal = scaled_16(relative.range_rate_longitudinal, 1e2);
    packet.hunter_value_a = scaled(pair.hunter.north, 1e3);
    packet.hunter_value_b = scaled(pair.hunter.east, 1e3);
    packet.target_value_a = scaled(pair.target.north, 1e3);
    packet.target_value_b = scaled(pair.target.east, 1e3);
    packet.hunter_value_c =
        static_cast<std::uint16_t>(scaled(unsigned_heading(pair.hunter.heading), 1e4));
    packet.target_value_c =
        static_cast<std::uint16_t>(scaled(unsigned_heading(pair.target.heading), 1e4));
    packet.status_channel = rcom_channel_in_turn(n);
    packet.status_data = rcom_status_data(packet.status_channel, pair);
    packet.velocity_longitudinal = scaled_16(speed, 1e2);
    packet.acceleration_lateral = scaled_16(relative.acceleration_lateral, 1e2);
    packet.acceleration_longitudinal = scaled_16(relative.acceleration_longitudinal, 1e2);
    return packet;
}

lane_packet lane_of(const vehicle_motion& hunter, std::uint64_t n) {
    lane_packet packet;
    packet.value_8 = scaled(hunter.east, 1e2);
    for (std::size_t i = 0; i < packet.values_12.size(); ++i)
        packet.values_12[i] = static_cast<std::int16_t>(1750 - 250 * static_cast<int>(i));
    packet.status_channel = lane_channel_in_turn(n);
    packet.status_data = lane_status_data(packet.status_channel, hunter);
    return packet;
}

bytes arp_request() {
    bytes frame(42, 0);
    frame[12] = 0x08;
    frame[13] = 0x06;
    return frame;
}

bytes name_query() {
    return udp_frame({unit_addresses[0], 5353}, {{224, 0, 0, 251}, 5353}, bytes(33));
}

} // namespace

void send_tick(const traffic_options& options, const scenario& vehicles, std::uint64_t tick,
               const frame_sink& sink) {
    constexpr std::uint64_t frame_gap_ns = 20'000;
    const double time = tick_time(options, tick);
    std::uint64_t time_ns = start_time_ns + tick * 1'000'000'000 / options.rate_hz;
    const auto send = [&](const bytes& frame) {
        sink(time_ns, frame);
        time_ns += frame_gap_ns;
    };
    const auto send_rcom = [&](const bytes& payload) {
        send(udp_frame({unit_addresses[0], rcom_port}, {broadcast, rcom_port}, payload));
    };

    const vehicle_motion hunter = vehicles.unit(0, time);
    ncom_packet hunter_ncom = ncom_of(vehicles, 0, time, tick);
    if (tick < initialising_ticks)
        make_initialising(hunter_ncom);
    send(udp_frame({unit_addresses[0], ncom_port}, {broadcast, ncom_port}, encode(hunter_ncom)));
    for (std::size_t target = 1; target <= options.targets; ++target) {
        // The decoder knows the addresses of targets only after the first tick.
        if (tick > 0) {
            const bytes ncom = encode(ncom_of(vehicles, target, time, tick));
            const ip_address& address = unit_addresses[target];
            if (options.wrapped_every != 0 && tick % options.wrapped_every == 0)
                send_rcom(encode_wrapped_ncom(address, ncom));
            else
                send(udp_frame({address, ncom_port}, {broadcast, ncom_port}, ncom));
        }
        send_rcom(encode(range_of(vehicles, target, time, tick)));
    }
    if (tick % lane_period == 0)
        send_rcom(encode(lane_of(hunter, tick / lane_period)));
    if (tick % foreign_period == 0) {
        send(arp_request());
        send(name_query());
    }
}

} // namespace zel::simulation
