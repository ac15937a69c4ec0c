// Which unit has which address.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>

namespace rtrange {

/// A unit and the address that RCOM has named for it.
struct identified_unit {
    std::size_t unit;      ///< index: 0 is the hunter, 1 to 4 are the targets
    std::uint32_t address; ///< in wire byte order

    friend bool operator<(const identified_unit& a, const identified_unit& b) {
        return std::tie(a.unit, a.address) < std::tie(b.unit, b.address);
    }
};

/// Parses the log message by which the decoder announces that it has identified a unit. Returns
/// nothing for other messages.
std::optional<identified_unit> parse_identification(const char* message);

} // namespace rtrange
