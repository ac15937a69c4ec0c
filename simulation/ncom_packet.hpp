// Encoder of NCOM packets of structure A.
#pragma once

#include <array>
#include <cstdint>

#include "simulation/wire_writer.hpp"

namespace zel::simulation {

/// Fields in wire order and wire units.
struct ncom_packet {
    std::uint8_t sync = 0xE7;
    std::uint16_t time_in_minute_ms = 0;
    std::array<std::int32_t, 3> acceleration{}; ///< 0.1 mm/s²
    std::array<std::int32_t, 3> rate{};         ///< 0.01 mrad/s
    std::uint8_t navigation_status = 4;         ///< 4 is locked, 11 marks structure B
    double latitude = 0.0;                      ///< rad
    double longitude = 0.0;                     ///< rad
    float altitude = 0.0F;                      ///< m
    std::array<std::int32_t, 3> velocity{};     ///< north, east, down; 0.1 mm/s
    std::int32_t heading = 0;                   ///< µrad
    std::int32_t pitch = 0;                     ///< µrad
    std::int32_t roll = 0;                      ///< µrad
    std::uint8_t status_channel = 0;
    std::array<std::uint8_t, 8> status_data{};
};

/// The 72 bytes of the packet, with its three checksums.
bytes encode(const ncom_packet& packet);

} // namespace zel::simulation
