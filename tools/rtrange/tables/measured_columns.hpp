// The columns of the view "measured".
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "tools/rtrange/tables/column.hpp"
#include "zel_rt_range_formatter/records/field.hpp"
#include "zel_rt_range_formatter/records/field_origin.hpp"

namespace rtrange {

/// One column of the view, apart from the leading ones.
struct measured_column {
    column shown;
    zel::toolbox::rt_range::field_origin origin;
    /// The field of the same name; null if the record has none.
    const zel::toolbox::rt_range::field* stored;
    bool of_hunter; ///< whether the table of the hunter has the column, too
};

/// The columns of a unit's table and of the table of RCOM.
const std::vector<measured_column>& measured_unit_columns();
const std::vector<measured_column>& measured_rcom_columns();

/// The fields of the samples' tables.
std::vector<zel::toolbox::rt_range::field> sample_fields();

/// The columns that every table begins with: reference_timestamp, time_s, packet.
std::span<const column> measured_leading_columns();

/// Index of the column with this name, which must exist.
std::size_t index_of(const std::vector<measured_column>& columns, std::string_view name);

} // namespace rtrange
