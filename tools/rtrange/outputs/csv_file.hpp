// CSV files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

/// A table with one header row, commas as separators and decimal points. Each number has the fewest
/// digits that read back as the same number. The cell of an unknown value is empty.
class csv_file {
public:
    /// Creates the file. Throws failure when that is not possible.
    csv_file(const std::filesystem::path& file, std::span<const column> columns);

    /// Appends rows, each with one cell per column, one after the other. Throws failure when they
    /// cannot be written.
    void write(std::span<const cell> cells);

    /// Completes the file. Throws failure when that is not possible.
    void close();

private:
    void write_row(std::span<const cell> cells);
    void reserve(std::size_t size);
    void flush();
    void append(std::string_view text);

    std::vector<cell_type> types_; ///< by column
    // The previous row: most fields keep their values from one row to the next, and copying a cell
    // is much faster than formatting it.
    std::vector<cell> contents_;         ///< by column
    std::vector<std::size_t> cell_ends_; ///< offsets in row_, by column, commas included
    std::vector<char> row_;              ///< text, with room for the longest row
    bool is_first_row_ = true;
    output_file file_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
};

} // namespace rtrange
