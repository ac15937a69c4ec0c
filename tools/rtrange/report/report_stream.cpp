#include "tools/rtrange/report/report_stream.hpp"

#include <cstddef>
#include <limits>
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
    for (std::vector<std::uint8_t>& column : values_) {
        block.insert(block.end(), column.begin(), column.end());
        column.clear();
    }
    text_ = fmt::format("<script type=\"text/plain\" data-stream=\"{}\" data-rows=\"{}\">", number_,
                        times_.size());
    append_base64(block, text_);
    text_ += "</script>\n";
    file.write(text_);
    times_.clear();
}

} // namespace rtrange
