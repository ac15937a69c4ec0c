// The records in the packages of one frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/loader/packages.hpp"

namespace rtrange {

/// The bytes of one decoded record, valid as long as its package.
using record_bytes = std::span<const std::uint8_t>;

/// The record of a unit.
struct unit_record {
    std::size_t unit; ///< index
    record_bytes record;
};

/// What one frame was decoded into.
struct decoded_packages {
    std::vector<unit_record> samples;  ///< of a sample batch that the packet completed
    std::optional<record_bytes> rcom;  ///< for an RCOM packet
    std::optional<unit_record> packet; ///< the unit after the packet

    bool empty() const { return samples.empty() && !rcom && !packet; }
};

/// Sorts the packages of one frame into `decoded`. Throws failure when a record does not have the
/// size that this program knows.
void sort_packages(const zel::host::package_array& packages, decoded_packages& decoded);

} // namespace rtrange
