// Which unit has which address.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace rtrange {

/// A unit and the address that RCOM has named for it.
struct identified_unit {
    std::size_t unit;      ///< index: 0 is the hunter, 1 to 4 are the targets
    std::uint32_t address; ///< bytes as they stand on the wire

    friend auto operator<=>(const identified_unit&, const identified_unit&) = default;
};

/// Parses the log message by which the decoder announces that it has identified a unit. Returns
/// nothing for other messages.
std::optional<identified_unit> parse_identification(const char* message);

} // namespace rtrange
