#include "tools/rtrange/tables/measured_view.hpp"

#include <algorithm>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/times.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr std::size_t leading_columns = 3;

/// A note names at most this many; others are only counted.
constexpr std::size_t most_listed_senders = 5;

/// A capture may contain any number of addresses.
constexpr std::size_t most_counted_senders = 1000;

} // namespace

measured_view::measured_view(const selection& selected, bool with_samples) {
    const auto& unit_columns = measured_unit_columns();
    const auto& rcom_columns = measured_rcom_columns();

    const auto state_of = [](const measured_column& column) -> std::size_t {
        return column.origin.first.packet == origin_packet::ext_range ? 1 : 0;
    };
    const auto select = [&](std::size_t table, const std::vector<measured_column>& all,
                            std::vector<cell_run>& runs, auto is_in_table) {
        runs.clear();
        const auto leading = measured_leading_columns();
        std::vector<column>& columns = columns_[table];
        columns.assign(leading.begin(), leading.end());
        const auto name = [](const measured_column& column) { return column.shown.name; };
        for (const measured_column& column : selected.in_order(std::span(all), name))
            if (is_in_table(column)) {
                add_to_runs(state_of(column), index_of(all, column.shown.name), runs);
                columns.push_back(column.shown);
            }
        if (runs.empty() || !selected.has_unit(table_descriptions()[table].unit))
            columns.clear();
    };
    const auto in_all = [](const measured_column&) { return true; };
    const auto of_hunter = [](const measured_column& column) { return column.of_hunter; };
    select(packet_table(hunter), unit_columns, hunter_columns_, of_hunter);
    select(unidentified_table, unit_columns, hunter_columns_, of_hunter);
    for (std::size_t unit = 1; unit < unit_count; ++unit)
        select(packet_table(unit), unit_columns, target_columns_, in_all);
    select(rcom_table, rcom_columns, rcom_columns_, in_all);

    const auto samples = sample_fields();
    const auto leading = measured_leading_columns();
    std::vector<column> sample_columns(leading.begin(), leading.end());
    for (const field& entry : selected.in_order(std::span<const field>(samples), &field::name)) {
        sample_columns.push_back({entry.name, cell_type::f64, entry.unit, entry.meaning});
        sample_fields_.emplace_back(entry, sizeof(ncom_unit_record));
    }
    for (std::size_t unit = 0; unit < unit_count; ++unit)
        if (with_samples && !sample_fields_.empty() &&
            selected.has_unit(table_descriptions()[samples_table(unit)].unit))
            columns_[samples_table(unit)] = sample_columns;

    most_packet_cells_ = 2 * leading_columns + unit_columns.size() + rcom_columns.size();
}

void measured_view::add_to_runs(std::size_t state, std::size_t column,
                                std::vector<cell_run>& runs) {
    if (!runs.empty() && runs.back().state == state &&
        runs.back().first_column + runs.back().count == column)
        ++runs.back().count;
    else
        runs.push_back({state, column, 1});
}

std::optional<std::size_t> measured_view::unit_table(const decoded_frame& frame) const {
    const auto& packet = frame.packages.packet;
    if (!packet || !frame.packet.plausible)
        return std::nullopt;
    if (frame.packet.is_ncom() && frame.addresses[packet->unit] != frame.packet.sender)
        return unidentified_table;
    return packet_table(packet->unit);
}

void measured_view::add_rows(const decoded_frame& frame, std::vector<table_row>& rows) {
    make_room(frame);
    zero_ns_ = frame.zero_ns;
    // The decoder ignores the values of an implausible packet, but repeats older ones.
    if (!frame.packet.plausible)
        return;
    state_.take(frame);
    notice_silence(frame);
    add_sample_rows(frame, rows);
    add_rcom_row(frame, rows);
    add_unit_row(frame, rows);
}

void measured_view::restart() {
    state_.restart();
    last_ncom_ns_ = {};
}

void measured_view::notice_silence(const decoded_frame& frame) {
    latest_ns_ = frame.time_ns;
    const auto unit = std::ranges::find(frame.addresses, frame.packet.sender);
    if (!frame.packet.is_ncom() || unit == frame.addresses.end())
        return;
    const auto i = static_cast<std::size_t>(unit - frame.addresses.begin());
    silences_[i] = longest_silence(i);
    last_ncom_ns_[i] = frame.time_ns;
}

/// The longest one so far, the current one included.
measured_view::silence measured_view::longest_silence(std::size_t unit) const {
    const silence& longest = silences_[unit];
    const std::uint64_t from_ns = last_ncom_ns_[unit].value_or(latest_ns_);
    return latest_ns_ - from_ns > longest.to_ns - longest.from_ns ? silence{from_ns, latest_ns_}
                                                                  : longest;
}

void measured_view::add_unit_row(const decoded_frame& frame, std::vector<table_row>& rows) {
    const auto& packet = frame.packages.packet;
    if (!packet)
        return;
    const std::size_t unit = packet->unit;
    const std::size_t table = unit_table(frame).value();
    if (table == unidentified_table)
        return add_unidentified_row(frame, rows);
    if (columns_[table].empty())
        return;
    begin_row(frame);
    add_cells(unit == hunter ? hunter_columns_ : target_columns_,
              {state_.of_unit(unit).data(), state_.of_range(unit).data()});
    end_row(table, frame, rows);
}

void measured_view::add_unidentified_row(const decoded_frame& frame, std::vector<table_row>& rows) {
    const std::uint32_t address = frame.packet.sender;
    if (unidentified_.size() < most_counted_senders || unidentified_.contains(address)) {
        unidentified_sender& from = unidentified_[address];
        ++from.rows;
        from.last_time_ns = frame.time_ns;
    }
    ++unidentified_rows_;
    if (columns_[unidentified_table].empty())
        return;
    const cell* const cells = state_.of_sender(address).data();
    begin_row(frame);
    add_cells(hunter_columns_, {cells, cells});
    end_row(unidentified_table, frame, rows);
}

void measured_view::add_rcom_row(const decoded_frame& frame, std::vector<table_row>& rows) {
    if (!frame.packages.rcom || columns_[rcom_table].empty())
        return;
    const cell* const cells = state_.of_rcom().data();
    begin_row(frame);
    add_cells(rcom_columns_, {cells, cells});
    end_row(rcom_table, frame, rows);
}

void measured_view::add_sample_rows(const decoded_frame& frame, std::vector<table_row>& rows) {
    for (const auto& [unit, record] : frame.packages.samples) {
        if (columns_[samples_table(unit)].empty() || frame.addresses[unit] != frame.packet.sender)
            continue;
        begin_row(frame);
        for (const stored_field& field : sample_fields_)
            add_cell(field.in(record.data()));
        end_row(samples_table(unit), frame, rows);
    }
}

/// The cells of all rows of a frame lie in one block, which must not move while they are made.
void measured_view::make_room(const decoded_frame& frame) {
    const std::size_t sample_row = leading_columns + sample_fields_.size();
    const std::size_t size = most_packet_cells_ + frame.packages.samples.size() * sample_row;
    if (cells_.size() < size)
        cells_.resize(size);
    used_cells_ = 0;
}

void measured_view::begin_row(const decoded_frame& frame) {
    row_begin_ = used_cells_;
    const auto since_zero = static_cast<std::int64_t>(frame.time_ns - frame.zero_ns);
    add_cell(frame.time_ns);
    add_cell(cell_of(static_cast<double>(since_zero) / 1e9));
    add_cell(cell_of(name_of(frame.packet.kind)));
}

void measured_view::add_cells(const std::vector<cell_run>& runs,
                              const std::array<const cell*, 2>& states) {
    for (const auto& [state, first_column, count] : runs) {
        std::copy_n(states[state] + first_column, count, cells_.data() + used_cells_);
        used_cells_ += count;
    }
}

void measured_view::end_row(std::size_t table, const decoded_frame& frame,
                            std::vector<table_row>& rows) {
    rows.push_back({table, frame.time_ns, frame.packet.kind,
                    std::span(cells_).subspan(row_begin_, used_cells_ - row_begin_)});
}

std::vector<std::string> measured_view::notes() const {
    std::vector<std::string> notes;
    for (std::size_t unit = 0; unit < unit_count; ++unit) {
        constexpr double longest_pause_s = 5.0;
        const auto [from_ns, to_ns] = longest_silence(unit);
        const double seconds = static_cast<double>(to_ns - from_ns) * 1e-9;
        if (seconds > longest_pause_s)
            notes.push_back(fmt::format(
                "{}: no NCOM for {:.3f} s, from {:.3f} s on; its values are the last known ones",
                table_descriptions()[packet_table(unit)].name, seconds,
                static_cast<double>(static_cast<std::int64_t>(from_ns - zero_ns_)) * 1e-9));
    }
    if (unidentified_.empty())
        return notes;
    std::string senders;
    std::size_t listed = 0;
    for (const auto& [address, sender] : unidentified_) {
        if (++listed > most_listed_senders)
            break;
        senders += fmt::format(
            "{}{} ({}, until {:.3f} s)", senders.empty() ? "" : ", ", ipv4_text(address),
            sender.rows,
            static_cast<double>(static_cast<std::int64_t>(sender.last_time_ns - zero_ns_)) * 1e-9);
    }
    if (unidentified_.size() > most_listed_senders)
        senders += ", and others";
    notes.push_back(fmt::format(
        "{} from {} no unit's at that moment, see the table 'unidentified': {}",
        unidentified_rows_ == 1 ? "1 NCOM packet came"
                                : fmt::format("{} NCOM packets came", unidentified_rows_),
        unidentified_.size() == 1 ? "an address that was" : "addresses that were", senders));
    return notes;
}

} // namespace rtrange
