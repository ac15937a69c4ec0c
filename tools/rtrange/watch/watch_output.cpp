#include "tools/rtrange/watch/watch_output.hpp"

#include <algorithm>

#include "tools/rtrange/tables/measured_columns.hpp"

namespace rtrange {

table_columns columns_of_tables(const table_columns& columns,
                                const std::vector<std::string>& fields) {
    table_columns result = columns;
    if (fields.empty())
        return result;
    const auto leading = static_cast<std::ptrdiff_t>(measured_leading_columns().size());
    for (std::size_t table = 0; table < table_count; ++table) {
        std::vector<column>& kept = result[table];
        if (table == refused_table || kept.empty())
            continue;
        const auto further =
            std::find_if(kept.begin() + leading, kept.end(), [&](const column& entry) {
                return std::ranges::find(fields, entry.name) == fields.end();
            });
        // A table without any of the fields has no columns at all.
        kept.erase(further == kept.begin() + leading ? kept.begin() : further, kept.end());
    }
    return result;
}

void watch_output::write(const table_row& row) {
    const std::size_t columns = columns_[row.table].size();
    if (tables_ != nullptr && columns > 0)
        tables_->write({row.table, row.reference_timestamp, row.packet, row.cells.first(columns)});
    history_.add(row);
}

void watch_output::close() {
    if (tables_ != nullptr)
        tables_->close();
}

std::vector<written_table> watch_output::tables() const {
    return tables_ != nullptr ? tables_->tables() : std::vector<written_table>{};
}

} // namespace rtrange
