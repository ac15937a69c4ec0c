// CSV files of records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "tools/rtrange/outputs/file_writer.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "zel_rt_range_formatter/records/field.hpp"

namespace rtrange {

/// A table with one header row, commas as separators and decimal points. Each number has the fewest
/// digits that read back as the same number. No cell needs quotes.
class csv_file {
public:
    /// Creates the file and writes the header row: the leading columns, then one column per field
    /// of a record of `record_size` bytes, at least 8. The writer must have finished before
    /// close(), and must be destroyed before the file. Throws failure when the file cannot be
    /// created.
    csv_file(const std::filesystem::path& file, std::span<const std::string_view> leading_columns,
             std::span<const zel::toolbox::rt_range::field> fields, std::size_t record_size,
             file_writer& writer);

    /// Appends a leading cell to the current row.
    void cell(std::uint64_t value);
    void cell(std::string_view text);

    /// Completes the current row with a cell for each field of the record.
    void end_row(std::span<const std::uint8_t> record);

    /// Hands all buffered rows to the writer.
    void flush();

    /// Completes the file. Throws failure when that is not possible.
    void close();

    const std::filesystem::path& path() const { return file_.path(); }
    std::uint64_t rows() const { return rows_; }

private:
    /// Where a field is in a record: in an eight-byte word that lies within the record.
    struct column {
        std::uint64_t content_in(const std::uint8_t* record) const;

        zel::toolbox::rt_range::field_type type;
        std::size_t word_offset;
        unsigned shift;
        std::uint64_t mask;
    };

    void reserve(std::size_t size);
    void append(std::string_view text);

    std::vector<column> columns_;
    // The previous row: most fields keep their values from one row to the next, and copying a cell
    // is much faster than formatting it.
    std::vector<std::uint64_t> contents_; ///< stored values, by column
    std::vector<std::size_t> cell_ends_;  ///< offsets in row_, by column, commas included
    std::vector<char> row_;               ///< text, with room for the longest row
    output_file file_;
    file_writer& writer_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
