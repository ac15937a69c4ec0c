// Codes of the failures that zelc itself reports.
#pragma once

#include <cstdint>

namespace zel::zelc::error_code {

inline constexpr std::uint32_t failed = 0xA0000FA5;
inline constexpr std::uint32_t out_of_memory = 0xA003000C;
inline constexpr std::uint32_t invalid_argument = 0xA0030016;

} // namespace zel::zelc::error_code
