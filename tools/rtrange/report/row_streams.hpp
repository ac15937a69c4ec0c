// The streams that the rows of a run are plotted in.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "tools/rtrange/report/report_columns.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// One stream per unit and kind of row.
using stream_key = std::pair<std::string, row_kind>;

/// Tells which stream a row belongs to.
class row_streams {
public:
    /// RCOM rows are plotted only where fields have been named. The columns must outlive the
    /// object.
    row_streams(const table_columns& columns, bool with_rcom)
        : columns_(columns), with_rcom_(with_rcom) {}

    /// Nothing for a row that is not plotted.
    std::optional<stream_key> stream_of(const table_row& row);

private:
    std::string unit_of(const table_row& row);

    const table_columns& columns_;
    bool with_rcom_;
    std::set<std::uint32_t> senders_; ///< unidentified ones with streams of their own
};

} // namespace rtrange
