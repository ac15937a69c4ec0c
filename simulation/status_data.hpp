// Plausible contents of status channels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "simulation/ethernet_frame.hpp"
#include "simulation/scenario.hpp"

namespace zel::simulation {

using status_data = std::array<std::uint8_t, 8>;

/// Status channel of the n-th NCOM packet of a unit. The channels are sent in turn.
std::uint8_t ncom_channel_in_turn(std::uint64_t n);

/// What a unit receives from satellites and from its base station.
struct satellite_fix {
    std::uint8_t satellites;
    std::uint8_t position_mode; ///< 5 RTK float, 6 RTK integer
    double position_accuracy;   ///< m, north and east
    double differential_age;    ///< s
};

/// The fix of a unit: good, but once a minute, at another time for each unit, corrections are
/// missing for ten seconds, and the position is less accurate for eight.
satellite_fix satellite_fix_of(std::size_t unit, double time);

/// Data of an NCOM status channel; `gps_minutes` count from 1980-01-06.
status_data ncom_status_data(std::uint8_t channel, std::int32_t gps_minutes,
                             const satellite_fix& fix);

/// Status channel of the n-th extended range packet of a target. All 22 are sent in turn; the first
/// one contains the addresses.
std::uint8_t rcom_channel_in_turn(std::uint64_t n);

/// The two vehicles that an extended range packet is about.
struct vehicle_pair {
    ip_address hunter_address;
    ip_address target_address;
    vehicle_motion hunter;
    vehicle_motion target;
    std::int32_t gps_minutes;
};

/// Data of a status channel of the extended range packet.
status_data rcom_status_data(std::uint8_t channel, const vehicle_pair& pair);

/// Status channel of the n-th lane packet, and its data.
std::uint8_t lane_channel_in_turn(std::uint64_t n);
status_data lane_status_data(std::uint8_t channel, const vehicle_motion& hunter);

} // namespace zel::simulation
