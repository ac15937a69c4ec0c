// The units of an installation and the tags of their records.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::toolbox::rt_range {

/// Unit index: 0 is the hunter, 1 to 4 are the targets.
inline constexpr std::uint32_t hunter = 0;
inline constexpr std::size_t target_count = 4;
inline constexpr std::size_t unit_count = 1 + target_count;

/// In place of a unit index: no unit. Measured faster than an empty std::optional, which GCC
/// returns through memory in two parts of different size.
inline constexpr std::uint32_t no_unit = unit_count;

/// First word of an NCOM package, by unit index.
inline constexpr std::array<std::uint32_t, unit_count> ncom_record_tags{
    0x00100000, 0x00300000, 0x00400000, 0x00500000, 0x00600000};

/// First word of an RCOM package.
inline constexpr std::uint32_t rcom_record_tag = 0x00200000;

} // namespace zel::toolbox::rt_range
