#include "tools/rtrange/csv_file.hpp"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <type_traits>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"

namespace rtrange {

using zel::toolbox::rt_range::field;
using zel::toolbox::rt_range::field_type;

namespace {

constexpr std::size_t buffer_size = 1 << 18;
constexpr std::size_t longest_cell = 64;

template <typename Number>
Number stored(const std::uint8_t* bytes) {
    Number number;
    std::memcpy(&number, bytes, sizeof(number));
    return number;
}

} // namespace

csv_file::csv_file(const std::filesystem::path& file,
                   std::span<const std::string_view> leading_columns, std::span<const field> fields)
    : path_(file), fields_(fields), file_(std::fopen(file.c_str(), "wb")), buffer_(buffer_size) {
    if (file_ == nullptr)
        fail();
    // The rows are collected here; a second buffer would only copy them once more.
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    for (const std::string_view column : leading_columns)
        cell(column);
    for (const field& field : fields_)
        cell(field.name);
    buffer_[used_ - 1] = '\n';
    flush();
}

void csv_file::cell(std::uint64_t value) {
    reserve(longest_cell);
    append_number(value);
    append(",");
}

void csv_file::cell(std::string_view text) {
    reserve(text.size() + 1);
    append(text);
    append(",");
}

void csv_file::end_row(std::span<const std::uint8_t> record) {
    reserve(fields_.size() * longest_cell);
    for (const field& field : fields_) {
        append_field(field.type, record.data() + field.offset);
        append(",");
    }
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

template <typename Number>
void csv_file::append_number(Number number) {
    char* const begin = buffer_.data() + used_;
    const auto result = std::to_chars(begin, buffer_.data() + buffer_.size(), number);
    used_ += static_cast<std::size_t>(result.ptr - begin);
}

void csv_file::append_field(field_type type, const std::uint8_t* bytes) {
    switch (type) {
    case field_type::u8:
        return append_number(bytes[0]);
    case field_type::u16:
        return append_number(stored<std::uint16_t>(bytes));
    case field_type::u32:
        return append_number(stored<std::uint32_t>(bytes));
    case field_type::u64:
        return append_number(stored<std::uint64_t>(bytes));
    case field_type::s16:
        return append_number(stored<std::int16_t>(bytes));
    case field_type::s32:
        return append_number(stored<std::int32_t>(bytes));
    case field_type::s64:
        return append_number(stored<std::int64_t>(bytes));
    case field_type::f64: {
        const auto number = stored<double>(bytes);
        // A sign or a payload of "not a number" is nothing that a table reader knows.
        return std::isnan(number) ? append("nan") : append_number(number);
    }
    case field_type::ipv4:
        for (std::size_t i = 0; i < 4; ++i) {
            append_number(bytes[i]);
            if (i < 3)
                append(".");
        }
        return;
    }
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
