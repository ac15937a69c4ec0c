// Access to parts of a raw package.
#pragma once

#include <cstdint>

#include "zel/raw_package.h"

namespace zel::toolbox::rt_range {

/// Bits 8 to 11 of `source_info`.
constexpr std::uint32_t source_info_nibble(const zel_raw_package_t& raw_package) {
    return raw_package.source_info >> 8 & 15U;
}

/// First of the `raw_package.size` data bytes.
inline const std::uint8_t* data_of(const zel_raw_package_t& raw_package) {
    return reinterpret_cast<const std::uint8_t*>(&raw_package) + sizeof(raw_package);
}

} // namespace zel::toolbox::rt_range
