#include "tools/rtrange/report/report_output.hpp"

#include <fmt/format.h>

#include "tools/rtrange/report/report_page.hpp"
#include "tools/rtrange/report/report_summary.hpp"

namespace rtrange {

report_output::report_output(report_options options, const table_columns& columns,
                             const frame_outcomes& outcomes)
    : options_(std::move(options)), columns_(columns), outcomes_(outcomes),
      rows_(columns, !options_.fields.empty()),
      result_(options_.output, report_page_file, {.overwrite = options_.overwrite}),
      file_(result_.path()) {
    file_.write(report_page_head());
}

void report_output::write(const table_row& row) {
    const auto key = rows_.stream_of(row);
    if (!key)
        return;
    if (streams_.empty())
        zero_ns_ = outcomes_.first_time_ns;
    const auto since_zero = static_cast<std::int64_t>(row.reference_timestamp - zero_ns_);
    stream_of(*key, row.table).add(row, static_cast<double>(since_zero) * 1e-9, file_);
}

report_stream& report_output::stream_of(const stream_key& key, std::size_t table) {
    const auto found = streams_by_key_.find(key);
    return found != streams_by_key_.end() ? *found->second : open(key, table);
}

report_stream& report_output::open(const stream_key& key, std::size_t table) {
    const auto& [unit, kind] = key;
    const auto& columns = columns_[table];
    streams_.push_back(std::make_unique<report_stream>(
        streams_.size(), unit, kind,
        options_.fields.empty() ? default_columns(columns, kind, plane_)
                                : columns_of(columns, options_.fields, kind, plane_)));
    streams_by_key_.emplace(key, streams_.back().get());
    return *streams_.back();
}

void report_output::close() {
    if (streams_.empty())
        zero_ns_ = outcomes_.first_time_ns;
    for (const auto& stream : streams_)
        stream->flush(file_);
    file_.write(report_summary(outcomes_, zero_ns_,
                               {options_.captures, options_.view, notes_, !options_.fields.empty()},
                               streams_));
    file_.write(report_page_tail());
    file_.close();
    result_.complete();
}

std::vector<written_table> report_output::tables() const {
    std::vector<written_table> result;
    result.reserve(streams_by_key_.size());
    for (const auto& [key, stream] : streams_by_key_)
        result.push_back({fmt::format("{} ({}, {})", result_.target().string(), stream->unit(),
                                      name_of(stream->kind())),
                          stream->rows(),
                          fmt::format("{}, {}", stream->unit(), name_of(stream->kind()))});
    return result;
}

} // namespace rtrange
