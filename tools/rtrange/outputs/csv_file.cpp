#include "tools/rtrange/outputs/csv_file.hpp"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {

namespace {

/// A text in quotes, each of its characters doubled, and the comma behind it. Numbers are shorter.
constexpr std::size_t longest_cell = 2 * longest_text + 3;

/// A shorter text is copied as a block of this size, which needs no call of memcpy. Most texts
/// between two changed cells are short.
constexpr std::size_t copied_at_once = 32;

/// Written at once, if rows are not longer.
constexpr std::size_t buffer_size = 1 << 18;

/// Writes a number with at most six decimals, as to_chars does but three times as fast. Most fields
/// are integers divided by a power of ten. Returns null for other numbers.
char* format_decimal(double number, char* begin) {
    constexpr double scale = 1e6;
    const double magnitude = std::abs(number);
    // Within these limits, to_chars never chooses the notation with an exponent.
    if (!(magnitude >= 1e-3 && magnitude < 1e5))
        return nullptr;
    // The comparison below rejects numbers that this rounds incorrectly.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings)
    const auto scaled = static_cast<std::uint64_t>(magnitude * scale + 0.5);
    // Decimals of up to 15 digits are distinct doubles, so this one is the shortest.
    if (static_cast<double>(scaled) / scale != magnitude)
        return nullptr;
    if (number < 0)
        *begin++ = '-';
    constexpr auto divisor = static_cast<std::uint64_t>(scale);
    char* end = std::to_chars(begin, begin + longest_cell, scaled / divisor).ptr;
    std::uint64_t decimals = scaled % divisor;
    if (decimals == 0)
        return end;
    *end = '.';
    for (std::size_t digit = 6; digit > 0; --digit, decimals /= 10)
        end[digit] = static_cast<char>('0' + decimals % 10);
    end += 6;
    while (*end == '0')
        --end;
    return end + 1;
}

char* format_double(double number, char* begin) {
    // Readers of tables do not know signs and payloads of NaN.
    if (std::isnan(number))
        return std::ranges::copy(std::string_view("nan"), begin).out;
    if (char* const end = format_decimal(number, begin))
        return end;
    return std::to_chars(begin, begin + longest_cell, number).ptr;
}

/// File names may contain commas and quotes.
char* format_text(const char* text, char* begin) {
    const std::string_view bytes(text, std::min(std::strlen(text), longest_text));
    if (bytes.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::ranges::copy(bytes, begin).out;
    *begin++ = '"';
    for (const char character : bytes) {
        if (character == '"')
            *begin++ = '"';
        *begin++ = character;
    }
    *begin++ = '"';
    return begin;
}

/// Formats the content of a cell at `begin`, where there is room for the longest cell, and returns
/// the end of the text.
char* format(cell_type type, cell content, char* begin) {
    char* const limit = begin + longest_cell;
    switch (type) {
    case cell_type::u8:
    case cell_type::u16:
    case cell_type::u32:
    case cell_type::u64:
        return std::to_chars(begin, limit, content).ptr;
    case cell_type::s16:
    case cell_type::s32:
    case cell_type::s64:
        return std::to_chars(begin, limit, static_cast<std::int64_t>(content)).ptr;
    case cell_type::f64:
        return format_double(number_in(content), begin);
    case cell_type::number:
        return std::isnan(number_in(content)) ? begin : format_double(number_in(content), begin);
    case cell_type::whole_number:
        return std::isnan(number_in(content))
                   ? begin
                   : std::to_chars(begin, limit, static_cast<std::int64_t>(number_in(content))).ptr;
    case cell_type::address:
        if (content == unknown_address)
            return begin;
        [[fallthrough]];
    case cell_type::ipv4:
        return format_ipv4(static_cast<std::uint32_t>(content), begin);
    case cell_type::text:
        return format_text(text_in(content), begin);
    }
    return begin;
}

/// Copies text, from which at least `copied_at_once` bytes can be read, and returns its end.
char* copy_text(const char* text, std::size_t size, char* out) {
    if (size <= copied_at_once)
        std::memcpy(out, text, copied_at_once);
    else
        std::memcpy(out, text, size);
    return out + size;
}

} // namespace

csv_file::csv_file(const std::filesystem::path& file, std::span<const column> columns)
    : contents_(columns.size()), cell_ends_(columns.size()),
      row_(columns.size() * longest_cell + copied_at_once), file_(file), buffer_(buffer_size) {
    for (const column& entry : columns) {
        append(entry.name);
        append(",");
        types_.push_back(entry.type);
    }
    buffer_[used_ - 1] = '\n';
}

void csv_file::write(std::span<const cell> cells) {
    for (; !cells.empty(); cells = cells.subspan(types_.size()))
        write_row(cells.first(types_.size()));
}

void csv_file::write_row(std::span<const cell> cells) {
    reserve(types_.size() * longest_cell + copied_at_once);
    char* const begin = buffer_.data() + used_;
    char* end = begin;
    std::size_t copied = 0;     // bytes of the previous row's text
    std::size_t cell_begin = 0; // in the previous row's text
    std::size_t shift = 0;      // from the previous row's offsets to this one's
    for (std::size_t i = 0; i < types_.size(); ++i) {
        const cell content = cells[i];
        const std::size_t cell_end = cell_ends_[i];
        if (content != contents_[i] || is_first_row_) {
            end = copy_text(row_.data() + copied, cell_begin - copied, end);
            end = format(types_[i], content, end);
            *end++ = ',';
            contents_[i] = content;
            copied = cell_end;
            shift = static_cast<std::size_t>(end - begin) - cell_end;
        }
        cell_ends_[i] = cell_end + shift;
        cell_begin = cell_end;
    }
    end = copy_text(row_.data() + copied, cell_begin - copied, end);
    const auto size = static_cast<std::size_t>(end - begin);
    std::memcpy(row_.data(), begin, size);
    used_ += size;
    buffer_[used_ - 1] = '\n';
    is_first_row_ = false;
}

void csv_file::close() {
    flush();
    file_.close();
}

void csv_file::reserve(std::size_t size) {
    if (used_ + size > buffer_.size())
        flush();
    if (size > buffer_.size())
        buffer_.resize(size);
}

void csv_file::append(std::string_view text) {
    std::ranges::copy(text, buffer_.begin() + static_cast<std::ptrdiff_t>(used_));
    used_ += text.size();
}

void csv_file::flush() {
    file_.write({buffer_.data(), used_});
    used_ = 0;
}

} // namespace rtrange
