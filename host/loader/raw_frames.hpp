// Ethernet frames as raw packages of the two format types.
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

/// Makes a raw package for "zel.rtrange": four bytes of CRC32C, then the frame.
void wrap_recorder_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package);

/// Makes a raw package for "zel.eth.rtrange": a vehicle bus header of 16 zeros, then the frame.
void wrap_ethernet_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package);

} // namespace zel::host
