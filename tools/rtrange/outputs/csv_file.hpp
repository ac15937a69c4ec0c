// CSV files of records.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "zel_rt_range_formatter/fields/field.hpp"

namespace rtrange {

/// A table with one header row: comma, decimal point, shortest numbers that read back the same, no
/// cell that needs quotes.
class csv_file {
public:
    /// Creates the file and writes the header row: the leading columns, then one per field. Throws
    /// failure when that is not possible.
    csv_file(const std::filesystem::path& file, std::span<const std::string_view> leading_columns,
             std::span<const zel::toolbox::rt_range::field> fields);

    /// A leading cell of the row in hand.
    void cell(std::uint64_t value);
    void cell(std::string_view text);

    /// Ends the row in hand with a cell for each field of the record.
    void end_row(std::span<const std::uint8_t> record);

    /// Completes the file. Throws failure when anything could not be written.
    void close();

    const std::filesystem::path& path() const { return path_; }
    std::uint64_t rows() const { return rows_; }

private:
    struct closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    /// The last content of a column and its text, comma included: from one row to the next, most
    /// fields stay as they are, and formatting costs ten times as much as copying.
    struct cached_column {
        zel::toolbox::rt_range::field_type type;
        std::size_t offset;
        std::uint64_t content;
        std::size_t text_size; ///< 0 before the first row
        std::array<char, 32> text;
    };

    void reserve(std::size_t size);
    void append(std::string_view text);
    void append_column(cached_column& column, const std::uint8_t* record);
    void flush();
    [[noreturn]] void fail() const;

    std::filesystem::path path_;
    std::vector<cached_column> columns_;
    std::unique_ptr<std::FILE, closer> file_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
