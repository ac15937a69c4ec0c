// RCOM packets on the wire.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::toolbox::rt_range {

inline constexpr std::uint64_t rcom_header_size = 4;
inline constexpr std::uint8_t rcom_sync_byte = 0x57; ///< the letter W

namespace rcom_packet_type {
inline constexpr std::uint8_t lane = 1;
inline constexpr std::uint8_t ext_range = 2;
inline constexpr std::uint8_t wrapped_ncom = 3;
inline constexpr std::uint8_t last = 4; ///< 0 and 4 are valid, but not decoded
} // namespace rcom_packet_type

/// Byte positions counted from the sync byte.
namespace ext_range_byte {
inline constexpr std::size_t target_number = 6;
inline constexpr std::size_t range_longitudinal = 12;
inline constexpr std::size_t status_channel = 41;
inline constexpr std::size_t status_data = 42;
} // namespace ext_range_byte

namespace lane_byte {
inline constexpr std::size_t status_channel = 49;
inline constexpr std::size_t status_data = 50;
} // namespace lane_byte

namespace wrapped_ncom_byte {
inline constexpr std::size_t unit_address = 4;
inline constexpr std::size_t ncom = 20;
} // namespace wrapped_ncom_byte

/// Packet length field of the sender.
inline constexpr std::size_t rcom_packet_length_byte = 2;

/// Status channel of the extended range packet with the addresses of hunter and target.
inline constexpr std::uint8_t address_channel = 9;

} // namespace zel::toolbox::rt_range
