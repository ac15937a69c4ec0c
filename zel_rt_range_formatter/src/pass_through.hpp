// What travels from a raw package into every package made of it.
#pragma once

#include <array>
#include <cstdint>

#include "extensibility/owned_package.hpp"
#include "zel/raw_package.h"

namespace zel::toolbox::rt_range {

/// Header values of one raw package, and where its output goes.
struct pass_through {
    std::uint16_t source_id;
    std::uint16_t source_info;
    std::uint32_t source_info_nibble;
    std::array<std::uint8_t, 16> pass_through_block;
    std::uint64_t reference_timestamp;
    extensibility::package_list& packages;
    const zel_allocator_t* allocator;
};

/// Bits 8 to 11 of `source_info`.
constexpr std::uint32_t source_info_nibble(std::uint16_t source_info) {
    return source_info >> 8 & 15U;
}

/// Collects the values of a raw package.
pass_through pass_through_of(const zel_raw_package_t& raw_package,
                             extensibility::package_list& packages,
                             const zel_allocator_t* allocator);

/// Writes the header values that every package has; the nibble is not among them.
void fill_header(zel_package_t& package, const pass_through& values);

} // namespace zel::toolbox::rt_range
