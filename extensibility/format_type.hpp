// Identifiers of the host's format families.
#pragma once

#include <cstdint>

#include "zel/format_type.h"

namespace zel::extensibility {

/// 16-bit codes of the format families that the plug-in uses: the low 4 bits select a group, the
/// upper 12 bits a number within the group.
namespace format_type_code {
inline constexpr std::uint16_t eth = 0x60F;
inline constexpr std::uint16_t rtrange = 0xA2F;
inline constexpr std::uint16_t eth_rtrange = 0xA3F;
} // namespace format_type_code

/// Identifier of a format family; null for any other code.
constexpr const char* format_type_identifier(std::uint16_t code) {
    switch (code) {
    case format_type_code::eth:
        return ZEL_FORMAT_TYPE_ETH;
    case format_type_code::rtrange:
        return ZEL_FORMAT_TYPE_RTRANGE;
    case format_type_code::eth_rtrange:
        return ZEL_FORMAT_TYPE_ETH_RTRANGE;
    default:
        return nullptr;
    }
}

} // namespace zel::extensibility
