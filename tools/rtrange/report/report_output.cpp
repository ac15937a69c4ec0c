#include "tools/rtrange/report/report_output.hpp"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/report/report_page.hpp"
#include "tools/rtrange/report/report_summary.hpp"
#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {

namespace {

bool is_samples_table(std::size_t table) {
    return table < rcom_table && table % 2 == 1;
}

} // namespace

report_output::report_output(report_options options, const table_columns& columns,
                             const frame_outcomes& outcomes)
    : options_(std::move(options)), columns_(columns), outcomes_(outcomes),
      result_(options_.output, report_page_file, {.overwrite = options_.overwrite}),
      file_(result_.path()) {
    file_.write(report_page_head());
}

void report_output::write(const table_row& row) {
    if (is_samples_table(row.table) || row.table == refused_table ||
        (row.table == rcom_table && options_.fields.empty()))
        return;
    if (streams_.empty())
        zero_ns_ = outcomes_.first_time_ns;
    const auto since_zero = static_cast<std::int64_t>(row.reference_timestamp - zero_ns_);
    stream_of(row).add(row, static_cast<double>(since_zero) * 1e-9, file_);
}

/// Unidentified senders are units of their own, as long as there are few.
std::string report_output::unit_of(const table_row& row) {
    std::string unit(table_descriptions()[row.table].unit);
    if (row.table != unidentified_table)
        return unit;
    const auto& columns = columns_[row.table];
    const auto source = std::ranges::find_if(
        columns, [](const column& entry) { return std::string_view(entry.name) == "source_ip"; });
    const auto address =
        static_cast<std::uint32_t>(row.cells[static_cast<std::size_t>(source - columns.begin())]);
    if (senders_.size() < most_named_senders)
        senders_.insert(address);
    return senders_.contains(address) ? ipv4_text(address) : unit;
}

report_stream& report_output::stream_of(const table_row& row) {
    const stream_key key{unit_of(row), kind_of(row)};
    const auto found = streams_by_key_.find(key);
    return found != streams_by_key_.end() ? *found->second : open(key, row.table);
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
                          stream->rows()});
    return result;
}

} // namespace rtrange
