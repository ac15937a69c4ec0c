#include "tools/rtrange/tables/measured_view.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/times.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr std::size_t leading_columns = 3;

/// Columns of a unit's table that the view computes.
struct unit_column_indices {
    explicit unit_column_indices(const std::vector<measured_column>& columns)
        : latitude(index_of(columns, "latitude")), longitude(index_of(columns, "longitude")),
          altitude(index_of(columns, "altitude")), heading(index_of(columns, "heading")),
          velocity_x(index_of(columns, "vehicle_velocity_x")),
          velocity_x_kmh(index_of(columns, "vehicle_velocity_x_kmh")),
          velocity_y(index_of(columns, "vehicle_velocity_y")),
          velocity_y_kmh(index_of(columns, "vehicle_velocity_y_kmh")),
          velocity_north(index_of(columns, "velocity_north")),
          velocity_east(index_of(columns, "velocity_east")), rate_z(index_of(columns, "rate_z")),
          curvature(index_of(columns, "curvature")), gps_minutes(index_of(columns, "gps_minutes")),
          gps_time(index_of(columns, "gps_time_us")), utc_offset(index_of(columns, "utc_offset")),
          utc_offset_valid(index_of(columns, "utc_offset_valid")),
          position_accuracy(index_of(columns, "position_accuracy_north")),
          position_accuracy_horizontal(index_of(columns, "position_accuracy_horizontal")),
          velocity_accuracy(index_of(columns, "velocity_accuracy_north")),
          velocity_accuracy_age(index_of(columns, "velocity_accuracy_age")),
          velocity_accuracy_horizontal(index_of(columns, "velocity_accuracy_horizontal")),
          displacement_y(index_of(columns, "output_displacement_y")),
          displacement_z(index_of(columns, "output_displacement_z")),
          position_mode(index_of(columns, "position_mode")),
          status_channel(index_of(columns, "ncom_status_channel")),
          checksum_error(index_of(columns, "checksum_error")),
          ttc_longitudinal(index_of(columns, "ttc_longitudinal")),
          ttc_lateral(index_of(columns, "ttc_lateral")),
          relative_accel(index_of(columns, "relative_accel_x")),
          relative_rate(index_of(columns, "relative_rate_x")),
          relative_heading(index_of(columns, "relative_heading")),
          relative_pitch(index_of(columns, "relative_pitch")),
          relative_roll(index_of(columns, "relative_roll")) {}

    std::size_t latitude, longitude, altitude, heading;
    std::size_t velocity_x, velocity_x_kmh, velocity_y, velocity_y_kmh;
    std::size_t velocity_north, velocity_east, rate_z, curvature;
    std::size_t gps_minutes, gps_time, utc_offset, utc_offset_valid;
    std::size_t position_accuracy, position_accuracy_horizontal;
    std::size_t velocity_accuracy, velocity_accuracy_age, velocity_accuracy_horizontal;
    std::size_t displacement_y, displacement_z, position_mode, status_channel, checksum_error;
    std::size_t ttc_longitudinal, ttc_lateral;
    std::size_t relative_accel, relative_rate; ///< of the first of three axes
    std::size_t relative_heading, relative_pitch, relative_roll;
};

const unit_column_indices& at() {
    static const unit_column_indices indices(measured_unit_columns());
    return indices;
}

/// Values of a whole number above this one mean that there is none.
unsigned largest_value(const measured_column& column) {
    constexpr unsigned largest_byte = 254;
    constexpr unsigned largest_mode = 32;
    const std::string_view name = column.shown.name;
    const bool is_byte = column.stored->type == field_type::u8;
    if (name.ends_with("_mode"))
        return largest_mode;
    if (name == "satellites" || (is_byte && name.ends_with("_age")))
        return largest_byte;
    return std::numeric_limits<unsigned>::max();
}

/// In records, the smallest and the largest double mean that there is no value.
bool is_marker(double value) {
    using limits = std::numeric_limits<double>;
    return value == limits::min() || std::abs(value) == limits::max();
}

/// The content of a cell of type whole_number.
cell whole(std::int64_t value) {
    return cell_of(static_cast<double>(value));
}

cell unknown(cell_type type) {
    return type == cell_type::address ? unknown_address : unknown_number;
}

/// As the record's, but unknown until the velocity accuracy has come.
void calculate_curvature(std::vector<cell>& cells) {
    constexpr double outdated_age = 150;
    const auto value = [&](std::size_t column) { return number_in(cells[column]); };
    const double accuracy = value(at().velocity_accuracy_horizontal);
    if (std::isnan(accuracy))
        return;
    const double speed = std::hypot(value(at().velocity_north), value(at().velocity_east));
    const bool is_known = speed > accuracy && value(at().velocity_accuracy_age) < outdated_age;
    cells[at().curvature] = cell_of(is_known ? to_radians(value(at().rate_z)) / speed : 0.0);
}

std::vector<cell> unknown_cells(const std::vector<measured_column>& columns) {
    std::vector<cell> cells;
    cells.reserve(columns.size());
    for (const measured_column& column : columns)
        cells.push_back(unknown(column.shown.type));
    return cells;
}

/// Longer ones are listed as a number only.
constexpr std::size_t most_listed_senders = 5;

/// A capture may contain any number of addresses.
constexpr std::size_t most_senders = 1000;

} // namespace

void measured_view::copied_field::copy(record_bytes record, std::vector<cell>& cells) const {
    const cell content = field.in(record.data());
    if (type == cell_type::address) {
        cells[column] = content;
    } else if (type == cell_type::number) {
        const double value = number_in(content);
        cells[column] = std::isnan(value) || is_marker(value) ? unknown_number : content;
    } else {
        const auto value = static_cast<std::int64_t>(content);
        cells[column] = value > std::int64_t{largest} ? unknown_number : whole(value);
    }
}

measured_view::measured_view(const selection& selected, bool with_samples) {
    const auto& unit_columns = measured_unit_columns();
    const auto& rcom_columns = measured_rcom_columns();
    unit_fields_ = sorted_fields(unit_columns, sizeof(ncom_unit_record));
    rcom_fields_ = sorted_fields(rcom_columns, sizeof(rcom_unit_record));
    for (const measured_column& column : unit_columns)
        from_range_.push_back(column.origin.first.packet == origin_packet::ext_range);

    const auto select = [&](std::size_t table, const std::vector<measured_column>& all,
                            std::vector<std::size_t>& indices, auto is_in_table) {
        indices.clear();
        const auto leading = measured_leading_columns();
        std::vector<column>& columns = columns_[table];
        columns.assign(leading.begin(), leading.end());
        const auto name = [](const measured_column& column) { return column.shown.name; };
        for (const measured_column& column : selected.in_order(std::span(all), name))
            if (is_in_table(column)) {
                indices.push_back(index_of(all, column.shown.name));
                columns.push_back(column.shown);
            }
        if (indices.empty() || !selected.has_unit(table_descriptions()[table].unit))
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

    // All cells of a frame lie in one block, which must not move while its rows are made.
    constexpr std::size_t most_samples = 30;
    cells_.reserve(most_samples * (leading_columns + sample_fields_.size()) + 2 * leading_columns +
                   unit_columns.size() + rcom_columns.size());
    restart();
}

measured_view::fields_by_packet
measured_view::sorted_fields(const std::vector<measured_column>& columns, std::size_t record_size) {
    fields_by_packet result;
    const auto add = [&](const copied_field& field, const packet_part& part) {
        copied_fields& fields = result[static_cast<std::size_t>(part.packet)];
        if (part.channel == packet_part::whole_packet)
            fields.with_packet.push_back(field);
        else
            fields.with_channel.at(static_cast<std::size_t>(part.channel)).push_back(field);
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto& [shown, origin, stored, of_hunter] = columns[i];
        if (stored == nullptr || origin.rule == origin_rule::both)
            continue;
        const copied_field field{i, shown.type, {*stored, record_size}, largest_value(columns[i])};
        add(field, origin.first);
        if (origin.rule == origin_rule::either)
            add(field, origin.second);
    }
    return result;
}

void measured_view::copied_fields::copy(std::uint8_t channel, record_bytes record,
                                        std::vector<cell>& cells) const {
    for (const copied_field& field : with_packet)
        field.copy(record, cells);
    for (const copied_field& field : with_channel[channel])
        field.copy(record, cells);
}

void measured_view::restart() {
    senders_.clear();
    pending_.clear();
    const auto unknown_unit = unknown_cells(measured_unit_columns());
    for (unit_state& unit : units_) {
        unit.address.reset();
        unit.unaddressed = {unknown_unit, {}, {}};
        unit.cells = unknown_unit;
    }
    rcom_cells_ = unknown_cells(measured_rcom_columns());
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
    cells_.clear();
    zero_ns_ = frame.zero_ns;
    learn_addresses(frame.addresses);
    // The decoder ignores the values of an implausible packet, but repeats older ones.
    if (!frame.packet.plausible)
        return;
    if (frame.packet.is_ncom())
        take_ncom(frame);
    take_rcom(frame);
    if (frame.packet.kind == packet_kind::range)
        take_range(frame);
    add_sample_rows(frame, rows);
    add_rcom_row(frame, rows);
    add_unit_row(frame, rows);
}

/// Keeps what a sender has brought when it becomes, or ceases to be, a unit.
void measured_view::learn_addresses(const known_addresses& addresses) {
    for (std::size_t i = 0; i < unit_count; ++i) {
        unit_state& unit = units_[i];
        if (unit.address == addresses[i])
            continue;
        if (!unit.address && addresses[i])
            senders_.try_emplace(*addresses[i], unit.unaddressed);
        unit.address = addresses[i];
    }
}

measured_view::sender_state& measured_view::sender(std::uint32_t address) {
    const auto found = senders_.find(address);
    if (found != senders_.end())
        return found->second;
    if (senders_.size() >= most_senders)
        std::erase_if(senders_, [&](const auto& entry) {
            return std::ranges::find(units_, entry.first, &unit_state::address) == units_.end();
        });
    sender_state& added = senders_[address];
    added.cells = unknown_cells(measured_unit_columns());
    return added;
}

measured_view::sender_state& measured_view::sender_of(std::size_t unit) {
    unit_state& state = units_[unit];
    return state.address ? sender(*state.address) : state.unaddressed;
}

void measured_view::take_ncom(const decoded_frame& frame) {
    sender_state& from = sender(frame.packet.sender);
    const std::uint8_t channel = frame.packet.status_channel;
    const auto& package = frame.packages.packet;
    if (!package) {
        pending_[channel] = frame.packet.sender;
        take_packet(from, frame.packet);
        return;
    }
    if (package->unit == hunter) {
        for (const auto& [pending_channel, pending_sender] : pending_)
            take_channel(sender(pending_sender), pending_channel, package->record);
        pending_.clear();
    }
    for (const copied_field& field : fields_of(unit_fields_, origin_packet::ncom).with_packet)
        field.copy(package->record, from.cells);
    take_channel(from, channel, package->record);
    take_packet(from, frame.packet);
    calculate_curvature(from.cells);
}

/// Takes what the view computes from the packet alone.
void measured_view::take_packet(sender_state& sender, const received_packet& packet) {
    const std::uint8_t* const ncom = packet.ncom;
    std::vector<cell>& cells = sender.cells;
    const geographic_position position = position_in(ncom);
    cells[at().latitude] = cell_of(position.latitude);
    cells[at().longitude] = cell_of(position.longitude);
    const measured_motion& motion = sender.motion.emplace(motion_in(ncom));
    cells[at().heading] = cell_of(motion.heading);
    cells[at().velocity_x] = cell_of(motion.velocity_forward);
    cells[at().velocity_x_kmh] = cell_of(motion.velocity_forward * kmh_per_mps);
    cells[at().velocity_y] = cell_of(motion.velocity_left);
    cells[at().velocity_y_kmh] = cell_of(motion.velocity_left * kmh_per_mps);
    cells[at().status_channel] = whole(packet.status_channel);
    cells[at().checksum_error] = cell_of(has_wrong_checksum(ncom) ? 1.0 : 0.0);

    const std::uint8_t* const data = ncom + ncom_byte::status_data;
    if (packet.status_channel == 0) {
        constexpr std::uint8_t largest_mode = 32;
        cells[at().position_mode] = data[5] > largest_mode ? unknown_number : whole(data[5]);
    }
    if (packet.status_channel == 26) {
        cells[at().displacement_y] = cell_of(scaled_signed(data + 2, 2, 1000.0));
        cells[at().displacement_z] = cell_of(scaled_signed(data + 4, 2, 1000.0));
    }
    sender.clock.follow(ncom);
    if (const auto time_us = sender.clock.time_us()) {
        cells[at().gps_minutes] = whole(sender.clock.minutes().value());
        cells[at().gps_time] = whole(*time_us);
    }
}

void measured_view::take_channel(sender_state& sender, std::uint8_t channel, record_bytes record) {
    std::vector<cell>& cells = sender.cells;
    for (const copied_field& field :
         fields_of(unit_fields_, origin_packet::ncom).with_channel[channel])
        field.copy(record, cells);
    const auto horizontal = [&](std::size_t north) {
        return cell_of(std::hypot(number_in(cells[north]),
                                  number_in(cells[north + 1]))); // east is the next column
    };
    if (channel == 3)
        cells[at().position_accuracy_horizontal] = horizontal(at().position_accuracy);
    if (channel == 4)
        cells[at().velocity_accuracy_horizontal] = horizontal(at().velocity_accuracy);
    if (channel == 16 && number_in(cells[at().utc_offset_valid]) == 0.0)
        cells[at().utc_offset] = unknown_number;
}

void measured_view::take_range(const decoded_frame& frame) {
    const std::uint8_t channel = frame.packet.status_channel;
    const auto& packet = frame.packages.packet;
    if (!packet || !frame.packages.rcom)
        return; // about the hunter
    std::vector<cell>& cells = units_[packet->unit].cells;
    fields_of(unit_fields_, origin_packet::ext_range).copy(channel, packet->record, cells);
    for (const std::size_t column : {at().ttc_longitudinal, at().ttc_lateral})
        if (std::signbit(number_in(cells[column])))
            cells[column] = unknown_number; // moving apart

    rcom_unit_record rcom;
    std::memcpy(&rcom, frame.packages.rcom->data(), sizeof(rcom));
    std::vector<cell>& target = sender_of(packet->unit).cells;
    // A pair of zeros stands for no fix.
    if (channel == 8 && (rcom.target_latitude != 0.0 || rcom.target_longitude != 0.0)) {
        target[at().latitude] = cell_of(double{rcom.target_latitude});
        target[at().longitude] = cell_of(double{rcom.target_longitude});
    } else if (channel == 10 && (rcom.target_altitude != 0.0 || rcom.target_heading != 0.0)) {
        target[at().altitude] = cell_of(double{rcom.target_altitude});
        target[at().heading] = cell_of(full_circle(rcom.target_heading));
        if (auto& motion = sender_of(packet->unit).motion)
            motion->heading = full_circle(rcom.target_heading);
    }
}

void measured_view::take_rcom(const decoded_frame& frame) {
    if (!frame.packages.rcom)
        return;
    const record_bytes record = *frame.packages.rcom;
    const std::uint8_t channel = frame.packet.status_channel;
    fields_of(rcom_fields_, origin_packet::rcom).copy(0, record, rcom_cells_);
    if (frame.packet.kind == packet_kind::lane)
        fields_of(rcom_fields_, origin_packet::lane).copy(channel, record, rcom_cells_);
    if (frame.packet.kind != packet_kind::range)
        return;
    fields_of(rcom_fields_, origin_packet::ext_range).copy(channel, record, rcom_cells_);
    static const std::size_t velocity = index_of(measured_rcom_columns(), "velocity_lateral");
    static const std::size_t kmh = index_of(measured_rcom_columns(), "velocity_lateral_kmh");
    rcom_cells_[kmh] = cell_of(number_in(rcom_cells_[velocity]) * kmh_per_mps);
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
    const bool is_ncom = frame.packet.is_ncom();
    sender_state& from = is_ncom ? sender(frame.packet.sender) : sender_of(unit);
    std::vector<cell>& cells = from.cells;
    begin_row(frame);
    if (unit == hunter) {
        for (const std::size_t column : hunter_columns_)
            cells_.push_back(cells[column]);
    } else {
        compare_with_hunter(from);
        for (const std::size_t column : target_columns_)
            cells_.push_back(from_range_[column] ? units_[unit].cells[column] : cells[column]);
    }
    end_row(table, frame, rows);
}

/// Calculates the differences between a target and the hunter. Angles are the hunter's minus the
/// target's, like those of the record.
void measured_view::compare_with_hunter(sender_state& target) {
    const std::optional<measured_motion>& of_hunter = sender_of(hunter).motion;
    if (!of_hunter || !target.motion)
        return;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        target.cells[at().relative_accel + axis] =
            cell_of(target.motion->accelerations[axis] - of_hunter->accelerations[axis]);
        target.cells[at().relative_rate + axis] =
            cell_of(target.motion->rates[axis] - of_hunter->rates[axis]);
    }
    target.cells[at().relative_heading] =
        cell_of(angle_between(of_hunter->heading, target.motion->heading));
    target.cells[at().relative_pitch] =
        cell_of(angle_between(of_hunter->pitch, target.motion->pitch));
    target.cells[at().relative_roll] = cell_of(angle_between(of_hunter->roll, target.motion->roll));
}

void measured_view::add_unidentified_row(const decoded_frame& frame, std::vector<table_row>& rows) {
    const std::uint32_t address = frame.packet.sender;
    if (unidentified_.size() < most_senders || unidentified_.contains(address)) {
        unidentified_sender& from = unidentified_[address];
        ++from.rows;
        from.last_time_ns = frame.time_ns;
    }
    ++unidentified_rows_;
    if (columns_[unidentified_table].empty())
        return;
    const std::vector<cell>& cells = sender(address).cells;
    begin_row(frame);
    for (const std::size_t column : hunter_columns_)
        cells_.push_back(cells[column]);
    end_row(unidentified_table, frame, rows);
}

void measured_view::add_rcom_row(const decoded_frame& frame, std::vector<table_row>& rows) {
    if (!frame.packages.rcom || columns_[rcom_table].empty())
        return;
    begin_row(frame);
    for (const std::size_t column : rcom_columns_)
        cells_.push_back(rcom_cells_[column]);
    end_row(rcom_table, frame, rows);
}

void measured_view::add_sample_rows(const decoded_frame& frame, std::vector<table_row>& rows) {
    for (const auto& [unit, record] : frame.packages.samples) {
        if (columns_[samples_table(unit)].empty())
            continue;
        begin_row(frame);
        for (const stored_field& field : sample_fields_)
            cells_.push_back(field.in(record.data()));
        end_row(samples_table(unit), frame, rows);
    }
}

void measured_view::begin_row(const decoded_frame& frame) {
    row_begin_ = cells_.size();
    const auto since_zero = static_cast<std::int64_t>(frame.time_ns - frame.zero_ns);
    cells_.push_back(frame.time_ns);
    cells_.push_back(cell_of(static_cast<double>(since_zero) / 1e9));
    cells_.push_back(cell_of(name_of(frame.packet.kind)));
}

void measured_view::end_row(std::size_t table, const decoded_frame& frame,
                            std::vector<table_row>& rows) {
    rows.push_back(
        {table, frame.time_ns, frame.packet.kind, std::span(cells_).subspan(row_begin_)});
}

std::vector<std::string> measured_view::notes() const {
    if (unidentified_.empty())
        return {};
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
    return {fmt::format(
        "{} from {} no unit's at that moment, see the table 'unidentified': {}",
        unidentified_rows_ == 1 ? "1 NCOM packet came"
                                : fmt::format("{} NCOM packets came", unidentified_rows_),
        unidentified_.size() == 1 ? "an address that was" : "addresses that were", senders)};
}

} // namespace rtrange
