// RCOM packets on the wire.
#pragma once

#include <cstdint>

namespace zel::toolbox::rt_range {

inline constexpr std::uint64_t rcom_header_size = 4;
inline constexpr std::uint8_t rcom_sync_byte = 0x57; ///< the letter W

/// Types above this one do not exist.
inline constexpr std::uint8_t last_rcom_packet_type = 4;

} // namespace zel::toolbox::rt_range
