// Key figures of the rows that an output takes.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/tables/key_figure_collector.hpp"

namespace rtrange {

/// Passes all rows on to another output, and finds the key figures in them.
class with_key_figures final : public table_output {
public:
    /// `columns` are those of the rows; in the view record, no figures are found. The other output
    /// must outlive this one.
    with_key_figures(table_output& output, const table_columns& columns)
        : output_(output), collector_(columns) {}

    void write(const table_row& row) override {
        collector_.take(row);
        output_.write(row);
    }
    void close() override { output_.close(); }
    std::vector<written_table> tables() const override { return output_.tables(); }

    /// The figures of all rows so far, by unit. The outcomes tell which senders are units.
    std::vector<unit_figures> figures(const frame_outcomes& outcomes) const {
        std::set<std::uint32_t> identified;
        for (const auto& [unit, identification] : outcomes.identifications)
            identified.insert(unit.address);
        return collector_.figures(identified);
    }

private:
    table_output& output_;
    key_figure_collector collector_;
};

} // namespace rtrange
