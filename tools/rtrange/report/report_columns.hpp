// The columns of a report.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rtrange/report/local_plane.hpp"
#include "tools/rtrange/tables/row_kind.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// One column of a report.
struct report_column {
    std::string name;
    std::string unit;
    std::string meaning;
    bool is_double;                                ///< stored as 64 bits, otherwise 32
    std::function<double(const table_row&)> value; ///< NaN for values that are not plotted
    bool in_runs = false; ///< stored as runs of equal values; only with 32 bits
};

/// The names of all fields that the default plots need.
std::vector<std::string> default_fields();

/// Columns for the default plots, those of them that a table has. Not for rows of RCOM. The plane
/// must outlive them.
std::vector<report_column> default_columns(std::span<const column> table, row_kind kind,
                                           local_plane& plane);

/// Columns for plots of the fields with these names. The plane must outlive them.
std::vector<report_column> columns_of(std::span<const column> table,
                                      std::span<const std::string> names, row_kind kind,
                                      local_plane& plane);

} // namespace rtrange
