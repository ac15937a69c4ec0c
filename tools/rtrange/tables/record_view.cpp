#include "tools/rtrange/tables/record_view.hpp"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <span>

#include <fmt/format.h>

#include "tools/rtrange/tables/measured_values.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr column timestamp_column{"reference_timestamp", cell_type::u64, "ns",
                                  "capture time since 1970"};
constexpr std::array sources{"ncom", "rcom"};
constexpr column source_column{
    "source",
    cell_type::text,
    "",
    "packet that the row comes from: ncom for NCOM of the unit's own, rcom for an RCOM packet "
    "about it",
    4,
    sources};

/// Sample batches come first, then at most one RCOM record and one record of a unit.
constexpr std::size_t most_rows = 32;

/// The selected columns of a table, and their fields if `stored` is not null.
std::vector<column> columns_of(const selection& selected, bool has_source,
                               std::span<const field> fields, std::size_t record_size,
                               std::vector<stored_field>* stored) {
    std::vector<column> columns{timestamp_column};
    if (has_source)
        columns.push_back(source_column);
    const std::size_t leading = columns.size();
    for (const field& entry : selected.in_order(fields, &field::name)) {
        columns.push_back({entry.name, stored_type(entry.type), entry.unit, entry.meaning});
        if (stored != nullptr)
            stored->emplace_back(entry, record_size);
    }
    if (columns.size() == leading)
        columns.clear();
    return columns;
}

} // namespace

record_view::record_view(const selection& selected) {
    const auto of_unit =
        columns_of(selected, true, ncom_fields(), sizeof(ncom_unit_record), &ncom_fields_);
    const auto of_rcom =
        columns_of(selected, false, rcom_fields(), sizeof(rcom_unit_record), &rcom_fields_);
    for (std::size_t table = 0; table <= rcom_table; ++table)
        if (selected.has_unit(table_descriptions()[table].unit))
            columns_[table] = table == rcom_table ? of_rcom : of_unit;
    cells_.reserve(most_rows * (2 + ncom_fields_.size()) + 1 + rcom_fields_.size());
}

std::optional<std::size_t> record_view::unit_table(const decoded_frame& frame) const {
    const auto& packet = frame.packages.packet;
    return packet ? std::optional(packet_table(packet->unit)) : std::nullopt;
}

void record_view::add_rows(const decoded_frame& frame, std::vector<table_row>& rows) {
    cells_.clear();
    for (const unit_record& sample : frame.packages.samples)
        add_row(samples_table(sample.unit), frame, sample.record, rows);
    if (frame.packages.rcom)
        add_row(rcom_table, frame, *frame.packages.rcom, rows);
    if (const auto& packet = frame.packages.packet) {
        add_row(packet_table(packet->unit), frame, packet->record, rows);
        count(frame, *packet);
    }
}

void record_view::add_row(std::size_t table, const decoded_frame& frame, record_bytes record,
                          std::vector<table_row>& rows) {
    if (columns_[table].empty())
        return;
    const std::size_t first = cells_.size();
    cells_.push_back(frame.time_ns);
    if (table != rcom_table)
        cells_.push_back(cell_of(frame.packet.kind == packet_kind::ncom ? "ncom" : "rcom"));
    for (const stored_field& field : table == rcom_table ? rcom_fields_ : ncom_fields_)
        cells_.push_back(field.in(record.data()));
    rows.push_back({table, frame.time_ns, frame.packet.kind,
                    std::span(cells_).subspan(first, columns_[table].size())});
}

void record_view::count(const decoded_frame& frame, const unit_record& packet) {
    if (!frame.packet.is_ncom())
        return;
    ncom_rows& counts = counts_[packet.unit];
    double heading = 0;
    std::memcpy(&heading, packet.record.data() + offsetof(ncom_unit_record, heading),
                sizeof(heading));
    // The record converts angles with a rounded pi.
    constexpr double tolerance = 1e-4;
    ++counts.all;
    if (std::abs(angle_between(heading, motion_in(frame.packet.ncom).heading)) > tolerance)
        ++counts.other_heading;
    if (frame.addresses[packet.unit] != frame.packet.sender)
        ++counts.other_sender;
}

std::vector<std::string> record_view::notes() const {
    std::vector<std::string> notes;
    for (std::size_t unit = 0; unit < unit_count; ++unit) {
        const ncom_rows& counts = counts_[unit];
        const auto name = table_descriptions()[packet_table(unit)].name;
        const auto share = [&](std::uint64_t part) {
            return 100.0 * static_cast<double>(part) / static_cast<double>(counts.all);
        };
        if (counts.other_heading > 0)
            notes.push_back(fmt::format("{}: {:.1f} % of the NCOM rows have a heading that their "
                                        "packet does not have; see the view 'measured'",
                                        name, share(counts.other_heading)));
        if (counts.other_sender > 0)
            notes.push_back(fmt::format("{}: {} of {} NCOM rows come from addresses that were not "
                                        "known as this unit's",
                                        name, counts.other_sender, counts.all));
    }
    return notes;
}

} // namespace rtrange
