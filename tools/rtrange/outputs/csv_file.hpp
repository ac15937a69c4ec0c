// CSV files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "tools/rtrange/outputs/file_writer.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

/// A table with one header row, commas as separators and decimal points. Each number has the fewest
/// digits that read back as the same number. The cell of an unknown value is empty.
class csv_file {
public:
    /// Creates the file and writes the header row. The writer must have finished before close(),
    /// and must be destroyed before the file. Throws failure when the file cannot be created.
    csv_file(const std::filesystem::path& file, std::span<const column> columns,
             file_writer& writer);

    /// Appends a row with one cell per column.
    void write(std::span<const cell> cells);

    /// Hands all buffered rows to the writer.
    void flush();

    /// Completes the file. Throws failure when that is not possible.
    void close();

    const std::filesystem::path& path() const { return file_.path(); }
    std::uint64_t rows() const { return rows_; }

private:
    void reserve(std::size_t size);
    void append(std::string_view text);

    std::vector<cell_type> types_; ///< by column
    // The previous row: most fields keep their values from one row to the next, and copying a cell
    // is much faster than formatting it.
    std::vector<cell> contents_;         ///< by column
    std::vector<std::size_t> cell_ends_; ///< offsets in row_, by column, commas included
    std::vector<char> row_;              ///< text, with room for the longest row
    output_file file_;
    file_writer& writer_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
