// The key figures of a run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/rtrange/tables/key_figures.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// A key figure of one unit.
struct found_figure {
    const key_figure* figure;
    /// Empty only for the time to collision of a unit with ranges that never approached.
    std::optional<double> value;
    double time_s; ///< time of the first row with this value, since the first frame of the run
};

/// The key figures of one unit: those with a value.
struct unit_figures {
    std::string unit; ///< for example "target1", or the address of an unidentified sender
    std::vector<found_figure> figures;
};

/// Finds the key figures in the rows of the view measured. Memory does not grow with the run.
class key_figure_collector {
public:
    /// The columns of the tables that the rows are from. Figures whose columns a table does not
    /// have are left out, and so are those of tables without time_s: the view record has none.
    explicit key_figure_collector(const table_columns& columns);

    /// Takes a row of any table.
    void take(const table_row& row);

    /// The figures of all rows so far, by unit: the hunter, the targets, and those unidentified
    /// senders that were not identified as a unit later.
    std::vector<unit_figures> figures(const std::set<std::uint32_t>& identified) const;

private:
    enum class derivation : std::uint8_t { none, distance, closing_speed };

    /// Where the value of a figure is in a row.
    struct figure_source {
        std::size_t figure; ///< index
        derivation how;
        std::size_t column;
        std::size_t second_column; ///< of a derived value
    };
    struct table_sources {
        std::size_t time = 0; ///< column
        std::vector<figure_source> of_navigation;
        std::vector<figure_source> of_range;
        std::optional<std::size_t> sender; ///< column of the table of unidentified senders
    };
    struct best_value {
        double rank = -std::numeric_limits<double>::infinity();
        double value = 0;
        double time_s = 0;
    };
    struct unit_values {
        std::vector<best_value> best; ///< by figure; empty before the first row
        bool has_range_rows = false;
    };

    static std::optional<figure_source> source_of(std::size_t figure,
                                                  const std::vector<column>& columns);
    static double value_in(const table_row& row, const figure_source& source);
    unit_values& values_of(const table_row& row);
    static void add(const std::string& unit, const unit_values& values,
                    std::vector<unit_figures>& result);

    std::array<table_sources, table_count> sources_;
    std::array<unit_values, table_count> by_table_;
    std::map<std::uint32_t, unit_values> senders_; ///< by address
};

} // namespace rtrange
