// What packets have measured.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/rtrange/tables/measured_state.hpp"
#include "tools/rtrange/tables/selection.hpp"
#include "tools/rtrange/tables/stored_fields.hpp"
#include "tools/rtrange/tables/table_view.hpp"

namespace rtrange {

/// Rows that a person may rely on. A value is unknown until a packet of the row's own unit has
/// brought it. Headings and velocities come from the packet, without the record's filter. NCOM from
/// an address that is no unit's has a table of its own.
class measured_view final : public table_view {
public:
    /// `with_samples` adds the tables of the sample batches.
    measured_view(const selection& selected, bool with_samples);

    const table_columns& columns() const override { return columns_; }
    std::optional<std::size_t> unit_table(const decoded_frame& frame) const override;
    void add_rows(const decoded_frame& frame, std::vector<table_row>& rows) override;
    void restart() override;
    std::vector<std::string> notes() const override;

private:
    /// A time in which a unit that was heard before sent no NCOM.
    struct silence {
        std::uint64_t from_ns = 0;
        std::uint64_t to_ns = 0;
    };
    struct unidentified_sender {
        std::uint64_t rows;
        std::uint64_t last_time_ns;
    };

    /// Cells that follow one another in a row and in what they come from.
    struct cell_run {
        std::size_t state; ///< 0: NCOM, or RCOM in its own table; 1: extended range packets
        std::size_t first_column;
        std::size_t count;
    };

    static void add_to_runs(std::size_t state, std::size_t column, std::vector<cell_run>& runs);
    void notice_silence(const decoded_frame& frame);
    silence longest_silence(std::size_t unit) const;
    void add_unit_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_rcom_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_sample_rows(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_unidentified_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void make_room(const decoded_frame& frame);
    void begin_row(const decoded_frame& frame);
    void add_cell(cell content) { cells_[used_cells_++] = content; }
    void add_cells(const std::vector<cell_run>& runs, const std::array<const cell*, 2>& states);
    void end_row(std::size_t table, const decoded_frame& frame, std::vector<table_row>& rows);

    table_columns columns_;
    std::vector<cell_run> target_columns_; ///< the selected ones
    std::vector<cell_run> hunter_columns_;
    std::vector<cell_run> rcom_columns_;
    std::vector<stored_field> sample_fields_;

    measured_state state_;
    std::map<std::uint32_t, unidentified_sender> unidentified_;
    std::uint64_t unidentified_rows_ = 0;
    std::uint64_t zero_ns_ = 0;
    std::uint64_t latest_ns_ = 0; ///< time of the last frame
    std::array<std::optional<std::uint64_t>, zel::toolbox::rt_range::unit_count> last_ncom_ns_;
    std::array<silence, zel::toolbox::rt_range::unit_count> silences_; ///< the longest ones
    std::size_t most_packet_cells_; ///< of the rows of a packet, without its samples
    std::vector<cell> cells_;       ///< room for all rows of a frame
    std::size_t used_cells_ = 0;    ///< by the current frame's rows
    std::size_t row_begin_ = 0;
};

} // namespace rtrange
