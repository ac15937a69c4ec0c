// The rows of one unit and kind in a report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/report/report_columns.hpp"

namespace rtrange {

/// Collects rows and writes them in blocks, so that memory does not grow with the run. A block is a
/// script element that is not executed. Its text is the base64 of its columns, one after the other,
/// little-endian. The first column is the time in seconds, as a double. A column of runs is their
/// number, the row behind each run (both u32), and the value of each run.
class report_stream {
public:
    /// `number` identifies the blocks of this stream.
    report_stream(std::size_t number, std::string unit, row_kind kind,
                  std::vector<report_column> columns);

    /// Appends a row. Throws failure when a block cannot be written.
    void add(const table_row& row, double time_s, output_file& file);

    /// Writes the last block. Throws failure when it cannot be written.
    void flush(output_file& file);

    const std::string& unit() const { return unit_; }
    row_kind kind() const { return kind_; }
    const std::vector<report_column>& columns() const { return columns_; }
    std::uint64_t rows() const { return rows_; }

private:
    std::size_t number_;
    std::string unit_;
    row_kind kind_;
    std::vector<report_column> columns_;
    std::vector<double> times_;                     ///< of the current block
    std::vector<std::vector<std::uint8_t>> values_; ///< of the current block, by column
    std::string text_;
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
