#include "tools/rtrange/watch/live_history.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "tools/rtrange/decode_summary.hpp"

namespace rtrange {
namespace {

/// Index of the column time_s, which every table of the view "measured" has.
constexpr std::size_t time_column = 1;

std::vector<std::string> numbers_among(const std::vector<std::string>& fields,
                                       std::span<const column> table) {
    std::vector<std::string> result;
    for (const column& entry : table)
        if (entry.type != cell_type::ipv4 && entry.type != cell_type::address &&
            std::ranges::find(fields, entry.name) != fields.end())
            result.emplace_back(entry.name);
    return result;
}

std::vector<report_column> shown_columns(std::span<const column> table, row_kind kind,
                                         const std::vector<std::string>& fields,
                                         local_plane& plane) {
    std::vector<report_column> columns;
    if (kind != row_kind::rcom)
        columns = default_columns(table, kind, plane);
    for (report_column& column : columns)
        if (column.name == "east" || column.name == "north")
            column.value = [metres = column.value](const table_row& row) {
                return std::round(metres(row) * 1000.0) / 1000.0;
            };
    for (report_column& named : columns_of(table, numbers_among(fields, table), kind, plane))
        if (std::ranges::find(columns, named.name, &report_column::name) == columns.end())
            columns.push_back(std::move(named));
    return columns;
}

std::vector<std::string> names_of(const std::vector<report_column>& columns) {
    std::vector<std::string> names{"time"};
    for (const report_column& column : columns)
        names.push_back(column.name);
    return names;
}

void count(sender_status& sender, double time_s) {
    const auto second = static_cast<std::int64_t>(std::floor(time_s));
    if (second != sender.second) {
        sender.rows = {second == sender.second + 1 ? sender.rows[1] : 0, 0};
        sender.second = second;
    }
    ++sender.rows[1];
    sender.last_s = time_s;
}

} // namespace

live_history::live_history(const frame_decoder& decoder, const std::vector<std::string>& fields)
    : decoder_(decoder), fields_(fields), rows_(decoder.columns(), !fields.empty()) {}

void live_history::add(const table_row& row) {
    const auto key = rows_.stream_of(row);
    if (!key)
        return;
    if (row.reference_timestamp < latest_ns_)
        forget_rows();
    latest_ns_ = row.reference_timestamp;
    shown_stream& stream = stream_of(*key, row.table);
    if (stream.columns.empty())
        return;
    const double time_s = number_in(row.cells[time_column]);
    values_.assign(1, time_s);
    for (const report_column& column : stream.columns)
        values_.push_back(column.value(row));
    const std::scoped_lock lock(mutex_);
    stream.ring.add(++newest_, values_);
    count(stream.sender, time_s);
}

void live_history::finish_frame(std::uint64_t time_ns) {
    const frame_outcomes& outcomes = decoder_.outcomes();
    const auto now = std::chrono::steady_clock::now();
    std::optional<std::vector<std::string>> notes;
    if (now >= next_notes_ || outcomes.restarts != restarts_) {
        next_notes_ = now + std::chrono::seconds(1);
        restarts_ = outcomes.restarts;
        notes = run_notes(decoder_);
    }
    const std::scoped_lock lock(mutex_);
    if (!status_.zero_ns)
        status_.zero_ns = time_ns;
    status_.frames = outcomes.frames;
    status_.decoded = outcomes.decoded;
    status_.refused = outcomes.frames - outcomes.decoded - outcomes.not_ipv4 - outcomes.not_udp -
                      outcomes.other_ports - outcomes.ignored_rcom;
    status_.addresses = outcomes.addresses();
    if (notes)
        status_.notes = std::move(*notes);
}

void live_history::end(const std::vector<std::string>& faults) {
    std::vector<std::string> notes = run_notes(decoder_);
    notes.insert(notes.end(), faults.begin(), faults.end());
    const std::scoped_lock lock(mutex_);
    status_.notes = std::move(notes);
    status_.has_ended = true;
}

std::uint64_t live_history::newest() const {
    const std::scoped_lock lock(mutex_);
    return newest_;
}

history_part live_history::part(std::uint64_t after, std::uint64_t last) const {
    const std::scoped_lock lock(mutex_);
    history_part part{status_, {}, {}};
    for (const auto& [key, stream] : streams_) {
        if (stream->sender.rows[1] == 0)
            continue;
        part.senders.push_back(stream->sender);
        stream_rows rows{key, stream->names, {}};
        stream->ring.copy(after, last, rows.rows);
        if (!rows.rows.numbers.empty())
            part.streams.push_back(std::move(rows));
    }
    return part;
}

live_history::shown_stream& live_history::stream_of(const stream_key& key, std::size_t table) {
    // Without the mutex: only this thread changes the map.
    const auto found = streams_.find(key);
    if (found != streams_.end())
        return *found->second;
    auto columns = shown_columns(decoder_.columns()[table], key.second, fields_, plane_);
    const auto names = names_of(columns);
    row_ring ring(names.size(), key_ratings(key.second, names));
    auto created = std::make_unique<shown_stream>(
        shown_stream{names, std::move(columns), std::move(ring), {key, 0.0, -2, {}}});
    const std::scoped_lock lock(mutex_);
    return *streams_.emplace(key, std::move(created)).first->second;
}

void live_history::forget_rows() {
    const std::scoped_lock lock(mutex_);
    ++status_.epoch;
    for (const auto& [key, stream] : streams_) {
        stream->ring.clear();
        stream->sender = {key, 0.0, -2, {}};
    }
}

} // namespace rtrange
