// Kinds of rows of the tables of packets.
#pragma once

#include <cstdint>
#include <string_view>

#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Which part of a unit's state a row updates. The rest of the row repeats the values of earlier
/// packets.
enum class row_kind : std::uint8_t {
    navigation, ///< the unit's own NCOM, wrapped or not
    range,      ///< an extended range packet about the unit
    rcom        ///< a row of the RCOM table
};

row_kind kind_of(const table_row& row);

/// The name on pages and in summaries: "navigation", "range" or "rcom".
std::string_view name_of(row_kind kind);

} // namespace rtrange
