// The two outer headers in which Ethernet frames become raw packages.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/loader/packages.hpp"
#include "zel/format_type.h"

namespace zel::host {

/// Format types of the raw packages that hold Ethernet frames.
inline constexpr std::string_view recorder_frame_type = ZEL_FORMAT_TYPE_RTRANGE;
inline constexpr std::string_view ethernet_frame_type = ZEL_FORMAT_TYPE_ETH_RTRANGE;

/// Puts a frame behind a 4-byte source header with its CRC32C, as "zel.rtrange" wants it.
void wrap_recorder_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package);

/// Puts a frame behind a vehicle bus header of 16 zeros, as "zel.eth.rtrange" wants it.
void wrap_ethernet_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package);

} // namespace zel::host
