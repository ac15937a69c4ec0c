#include "tools/rtrange/outputs/csv_file.hpp"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"

namespace rtrange {

using zel::toolbox::rt_range::field;
using zel::toolbox::rt_range::field_type;

namespace {

constexpr std::size_t buffer_size = 1 << 18;
constexpr std::size_t longest_cell = 32;

/// Formats the stored content of a field at `begin`, where there is room for the longest cell;
/// gives its end.
char* format(field_type type, std::uint64_t content, char* begin) {
    char* const limit = begin + longest_cell;
    switch (type) {
    case field_type::u8:
    case field_type::u16:
    case field_type::u32:
    case field_type::u64:
        return std::to_chars(begin, limit, content).ptr;
    case field_type::s16:
        return std::to_chars(begin, limit, static_cast<std::int16_t>(content)).ptr;
    case field_type::s32:
        return std::to_chars(begin, limit, static_cast<std::int32_t>(content)).ptr;
    case field_type::s64:
        return std::to_chars(begin, limit, static_cast<std::int64_t>(content)).ptr;
    case field_type::f64: {
        const auto number = std::bit_cast<double>(content);
        // A sign or a payload of "not a number" is nothing that a table reader knows.
        return std::isnan(number) ? std::ranges::copy(std::string_view("nan"), begin).out
                                  : std::to_chars(begin, limit, number).ptr;
    }
    case field_type::ipv4:
        return fmt::format_to(begin, "{}.{}.{}.{}", content & 0xFF, content >> 8 & 0xFF,
                              content >> 16 & 0xFF, content >> 24);
    }
    return begin;
}

} // namespace

csv_file::csv_file(const std::filesystem::path& file,
                   std::span<const std::string_view> leading_columns, std::span<const field> fields)
    : path_(file), file_(open_for_writing(file)), buffer_(buffer_size) {
    if (file_ == nullptr)
        fail();
    // The rows are collected here; a second buffer would only copy them once more.
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    for (const std::string_view name : leading_columns)
        cell(name);
    for (const field& field : fields) {
        cell(field.name);
        columns_.push_back({field.type, field.offset, 0, 0, {}});
    }
    buffer_[used_ - 1] = '\n';
    flush();
}

void csv_file::cell(std::uint64_t value) {
    std::array<char, longest_cell> text;
    cell(std::string_view(text.data(), format(field_type::u64, value, text.data())));
}

void csv_file::cell(std::string_view text) {
    reserve(text.size() + 1);
    append(text);
    append(",");
}

void csv_file::end_row(std::span<const std::uint8_t> record) {
    reserve(columns_.size() * longest_cell);
    for (cached_column& column : columns_)
        append_column(column, record.data());
    buffer_[used_ - 1] = '\n';
    ++rows_;
}

void csv_file::close() {
    flush();
    std::FILE* const file = file_.release();
    if (std::fclose(file) != 0)
        fail();
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

void csv_file::append_column(cached_column& column, const std::uint8_t* record) {
    std::uint64_t content = 0;
    std::memcpy(&content, record + column.offset, size_of(column.type));
    if (content != column.content || column.text_size == 0) {
        char* const begin = column.text.data();
        char* const end = format(column.type, content, begin);
        *end = ',';
        column.content = content;
        column.text_size = static_cast<std::size_t>(end + 1 - begin);
    }
    // Always the whole text array: a copy of fixed size needs no call.
    std::memcpy(buffer_.data() + used_, column.text.data(), column.text.size());
    used_ += column.text_size;
}

void csv_file::flush() {
    if (std::fwrite(buffer_.data(), 1, used_, file_.get()) != used_)
        fail();
    used_ = 0;
}

void csv_file::fail() const {
    throw failure(fmt::format("cannot write '{}': {}", path_.string(), std::strerror(errno)));
}

} // namespace rtrange
