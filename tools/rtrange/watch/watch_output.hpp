// Output to a live page, and to tables beside it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/watch/live_history.hpp"

namespace rtrange {

/// The columns of the tables of a run whose decoder has further fields at the end of each table,
/// which the page needs. `fields` are those that were asked for; empty for all.
table_columns columns_of_tables(const table_columns& columns,
                                const std::vector<std::string>& fields);

/// Hands the rows of a run to the page, and to the tables if there are any.
class watch_output final : public table_output {
public:
    /// The arguments must outlive the output. `tables` may be null.
    watch_output(live_history& history, table_output* tables, const table_columns& columns)
        : history_(history), tables_(tables), columns_(columns) {}

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    live_history& history_;
    table_output* tables_;
    const table_columns& columns_; ///< of the tables
};

} // namespace rtrange
