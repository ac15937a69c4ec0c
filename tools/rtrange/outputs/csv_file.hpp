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

/// A table with one header row: comma, decimal point, shortest numbers that read back the same, no
/// cell that needs quotes.
class csv_file {
public:
    /// Creates the file and writes the header row: the leading columns, then one per field of a
    /// record of `record_size` bytes, at least 8. The writer has to finish before the file is
    /// closed, and to end before the file does. Throws failure when it cannot be created.
    csv_file(const std::filesystem::path& file, std::span<const std::string_view> leading_columns,
             std::span<const zel::toolbox::rt_range::field> fields, std::size_t record_size,
             file_writer& writer);

    /// A leading cell of the row in hand.
    void cell(std::uint64_t value);
    void cell(std::string_view text);

    /// Ends the row in hand with a cell for each field of the record.
    void end_row(std::span<const std::uint8_t> record);

    /// Hands all rows over to the writer.
    void flush();

    /// Completes the file. Throws failure when that is not possible.
    void close();

    const std::filesystem::path& path() const { return file_.path(); }
    std::uint64_t rows() const { return rows_; }

private:
    /// Where a column's content stands in a record: within eight bytes that all belong to it.
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
    // The last row: from one row to the next most fields stay as they are, and formatting costs
    // many times as much as copying.
    std::vector<std::uint64_t> contents_; ///< by column
    std::vector<std::size_t> cell_ends_;  ///< by column, in its text, commas included
    std::vector<char> row_;               ///< its text, with room for the longest
    output_file file_;
    file_writer& writer_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
