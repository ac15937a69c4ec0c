#include "tools/rtrange/report/report_stream.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

#include <fmt/format.h>

#include "tools/rtrange/report/base64.hpp"

namespace rtrange {
namespace {

constexpr std::size_t rows_per_block = 4096;

template <typename T>
void append(T value, std::vector<std::uint8_t>& bytes) {
    const auto* const begin = reinterpret_cast<const std::uint8_t*>(&value);
    bytes.insert(bytes.end(), begin, begin + sizeof(value));
}

/// NaN for numbers outside the range of a float, which no plot can show usefully.
float narrowed(double value) {
    const bool fits = value >= static_cast<double>(std::numeric_limits<float>::lowest()) &&
                      value <= static_cast<double>(std::numeric_limits<float>::max());
    return fits ? static_cast<float>(value) : std::numeric_limits<float>::quiet_NaN();
}

/// Appends a column of floats as runs of equal values.
void append_runs(std::span<const std::uint8_t> column, std::vector<std::uint8_t>& bytes) {
    constexpr std::size_t size = sizeof(float);
    std::vector<std::uint8_t> values;
    std::vector<std::uint32_t> ends;
    for (std::size_t at = 0; at < column.size(); at += size) {
        const auto value = column.subspan(at, size);
        if (at == 0 || !std::ranges::equal(value, column.subspan(at - size, size))) {
            values.insert(values.end(), value.begin(), value.end());
            ends.push_back(0);
        }
        ends.back() = static_cast<std::uint32_t>(at / size + 1);
    }
    append(static_cast<std::uint32_t>(ends.size()), bytes);
    for (const std::uint32_t end : ends)
        append(end, bytes);
    bytes.insert(bytes.end(), values.begin(), values.end());
}

} // namespace

report_stream::report_stream(std::size_t number, std::string unit, row_kind kind,
                             std::vector<report_column> columns)
    : number_(number), unit_(std::move(unit)), kind_(kind), columns_(std::move(columns)),
      values_(columns_.size()) {}

void report_stream::add(const table_row& row, double time_s, output_file& file) {
    times_.push_back(time_s);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const double value = columns_[i].value(row);
        if (columns_[i].is_double)
            append(value, values_[i]);
        else
            append(narrowed(value), values_[i]);
    }
    ++rows_;
    if (times_.size() == rows_per_block)
        flush(file);
}

void report_stream::flush(output_file& file) {
    if (times_.empty())
        return;
    std::vector<std::uint8_t> block;
    for (const double time : times_)
        append(time, block);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].in_runs)
            append_runs(values_[i], block);
        else
            block.insert(block.end(), values_[i].begin(), values_[i].end());
        values_[i].clear();
    }
    text_ = fmt::format("<script type=\"text/plain\" data-stream=\"{}\" data-rows=\"{}\">", number_,
                        times_.size());
    append_base64(block, text_);
    text_ += "</script>\n";
    file.write(text_);
    times_.clear();
}

} // namespace rtrange
