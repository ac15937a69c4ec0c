// The NCOM packet of structure A on the wire.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::toolbox::rt_range {

inline constexpr std::uint64_t ncom_packet_size = 72;
inline constexpr std::uint8_t ncom_sync_byte = 0xE7;

/// Byte positions counted from the sync byte.
namespace ncom_byte {
inline constexpr std::size_t time = 1;
inline constexpr std::size_t accelerations = 3;
inline constexpr std::size_t rates = 12;
inline constexpr std::size_t navigation_status = 21;
inline constexpr std::size_t checksum_1 = 22;
inline constexpr std::size_t latitude = 23;
inline constexpr std::size_t longitude = 31;
inline constexpr std::size_t altitude = 39;
inline constexpr std::size_t velocities = 43;
inline constexpr std::size_t heading = 52;
inline constexpr std::size_t pitch = 55;
inline constexpr std::size_t roll = 58;
inline constexpr std::size_t checksum_2 = 61;
inline constexpr std::size_t status_channel = 62;
inline constexpr std::size_t status_data = 63;
inline constexpr std::size_t checksum_3 = 71;
} // namespace ncom_byte

/// Whether the navigation status marks a packet of structure B, which carries no navigation data.
/// `ncom` has at least 72 bytes.
constexpr bool is_structure_b(const std::uint8_t* ncom) {
    constexpr std::uint8_t structure_b = 11;
    return ncom[ncom_byte::navigation_status] == structure_b;
}

} // namespace zel::toolbox::rt_range
