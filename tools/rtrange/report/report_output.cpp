#include "tools/rtrange/report/report_output.hpp"

#include <cstring>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/report/report_page.hpp"
#include "tools/rtrange/report/report_summary.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// Unit of rows in the hunter's table that may belong to other units, because the addresses were
/// not known yet.
constexpr std::string_view unidentified = "unidentified";

bool is_samples_table(std::size_t table) {
    return table != rcom_table && table % 2 == 1;
}

endpoint_header endpoint_of(const record_row& row) {
    endpoint_header endpoint;
    std::memcpy(&endpoint, row.record.data() + offsetof(ncom_unit_record, endpoint),
                sizeof(endpoint));
    return endpoint;
}

} // namespace

report_output::report_output(report_options options, const selection& selected,
                             const frame_outcomes& outcomes)
    : options_(std::move(options)), selected_(selected), outcomes_(outcomes),
      file_(options_.output) {
    file_.write(report_page_head());
}

void report_output::write(const record_row& row) {
    if (is_samples_table(row.table) || (row.table == rcom_table && !options_.named_fields))
        return;
    if (streams_.empty())
        zero_ns_ = outcomes_.first_time_ns;
    const auto since_zero = static_cast<std::int64_t>(row.reference_timestamp - zero_ns_);
    stream_of(row).add(row, static_cast<double>(since_zero) * 1e-9, file_);
}

row_kind report_output::kind_of(const record_row& row) {
    if (row.table == rcom_table)
        return row_kind::rcom;
    // NCOM, also wrapped NCOM, increments the count; range packets do not.
    const std::uint64_t count = endpoint_of(row).packet_count;
    std::optional<std::uint64_t>& last = packet_counts_[row.table];
    const bool counted = last ? count != *last && count != 0 : row.source == "ncom";
    last = count;
    return counted ? row_kind::navigation : row_kind::range;
}

report_stream& report_output::stream_of(const record_row& row) {
    const row_kind kind = kind_of(row);
    const bool is_mixed = row.table == packet_table(hunter) &&
                          endpoint_of(row).source_ip != outcomes_.hunter_address();
    const std::string_view unit = is_mixed ? unidentified : record_tables()[row.table].unit;
    const stream_key key{unit, kind};
    const auto found = streams_by_key_.find(key);
    return found != streams_by_key_.end() ? *found->second : open(key, row.table);
}

report_stream& report_output::open(const stream_key& key, std::size_t table) {
    const auto& [unit, kind] = key;
    auto columns = options_.named_fields ? columns_of(selected_.fields(table), kind, plane_)
                                         : default_columns(kind, plane_);
    streams_.push_back(
        std::make_unique<report_stream>(streams_.size(), unit, kind, std::move(columns)));
    streams_by_key_.emplace(key, streams_.back().get());
    return *streams_.back();
}

void report_output::close() {
    if (streams_.empty())
        zero_ns_ = outcomes_.first_time_ns;
    for (const auto& stream : streams_)
        stream->flush(file_);
    file_.write(report_summary(outcomes_, zero_ns_,
                               {options_.captures, "record", notes_, options_.named_fields},
                               streams_));
    file_.write(report_page_tail());
    file_.close();
}

std::vector<written_table> report_output::tables() const {
    std::vector<written_table> result;
    result.reserve(streams_by_key_.size());
    for (const auto& [key, stream] : streams_by_key_)
        result.push_back({fmt::format("{} ({}, {})", file_.path().string(), stream->unit(),
                                      name_of(stream->kind())),
                          stream->rows()});
    return result;
}

} // namespace rtrange
