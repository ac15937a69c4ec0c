// The network traffic of a simulated run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "simulation/ethernet_frame.hpp"
#include "simulation/scenario.hpp"

namespace zel::simulation {

/// Addresses of the hunter and of targets 1 to 4, by unit.
inline constexpr std::array<ip_address, 5> unit_addresses{
    {{195, 0, 0, 10}, {195, 0, 0, 21}, {195, 0, 0, 22}, {195, 0, 0, 23}, {195, 0, 0, 24}}};

/// 2026-01-05 10:00:00 UTC in nanoseconds since 1970.
inline constexpr std::uint64_t start_time_ns = 1'767'607'200'000'000'000;

/// Parameters of a simulated run.
struct traffic_options {
    std::uint32_t duration_s = 10;
    std::uint32_t rate_hz = 100; ///< NCOM and extended range packets per unit and second
    std::uint32_t wrapped_every =
        4;                   ///< every n-th NCOM packet of a target is wrapped in RCOM; 0 none
    std::size_t targets = 2; ///< 1 to 4
    std::uint64_t seed = 1;
    scenario_kind scenario = scenario_kind::following;
};

/// Number of ticks in which the hunter is initialising: its NCOM has navigation status 3 and no
/// heading.
inline constexpr std::uint64_t initialising_ticks = 2;

/// The number of times in a run at which all units send.
constexpr std::uint64_t tick_count(const traffic_options& options) {
    return std::uint64_t{options.duration_s} * options.rate_hz;
}

/// Time of a tick in seconds from the start. All frames of a tick describe this time.
constexpr double tick_time(const traffic_options& options, std::uint64_t tick) {
    return static_cast<double>(tick) / options.rate_hz;
}

/// Takes one frame and its time in nanoseconds since 1970.
using frame_sink = std::function<void(std::uint64_t time_ns, std::span<const std::uint8_t> frame)>;

/// Sends the frames of one tick: the hunter's NCOM, each target's NCOM (direct or wrapped, from the
/// second tick on) and extended range packet, in every fifth tick a lane packet, in every fiftieth
/// foreign traffic. The same options give the same bytes.
void send_tick(const traffic_options& options, const scenario& vehicles, std::uint64_t tick,
               const frame_sink& sink);

} // namespace zel::simulation
