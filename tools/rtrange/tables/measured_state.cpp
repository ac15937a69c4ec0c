#include "tools/rtrange/tables/measured_state.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/src/conversions.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// Columns of a unit's table that the view computes.
struct unit_column_indices {
    explicit unit_column_indices(const std::vector<measured_column>& columns)
        : packet_count(index_of(columns, "packet_count")), latitude(index_of(columns, "latitude")),
          longitude(index_of(columns, "longitude")), altitude(index_of(columns, "altitude")),
          heading(index_of(columns, "heading")),
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

    std::size_t packet_count, latitude, longitude, altitude, heading;
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

/// Not std::hypot, whose last bits differ between systems.
double root_of_squares(double x, double y) {
    return std::sqrt(x * x + y * y);
}

/// As the record's, but unknown until the velocity accuracy has come.
void calculate_curvature(std::vector<cell>& cells) {
    constexpr double outdated_age = 150;
    const auto value = [&](std::size_t column) { return number_in(cells[column]); };
    const double accuracy = value(at().velocity_accuracy_horizontal);
    if (std::isnan(accuracy))
        return;
    const double speed = root_of_squares(value(at().velocity_north), value(at().velocity_east));
    const bool is_known = speed > accuracy && value(at().velocity_accuracy_age) < outdated_age;
    cells[at().curvature] = cell_of(is_known ? to_radians(value(at().rate_z)) / speed : 0.0);
}

/// A capture may contain any number of addresses.
constexpr std::size_t most_senders = 1000;

} // namespace

measured_state::measured_state()
    : unit_fields_(measured_unit_columns(), sizeof(ncom_unit_record)),
      rcom_fields_(measured_rcom_columns(), sizeof(rcom_unit_record)) {
    restart();
}

void measured_state::restart() {
    senders_.clear();
    pending_.clear();
    const auto unknown_unit = unknown_cells(measured_unit_columns());
    for (unit_state& unit : units_) {
        unit.address.reset();
        unit.unaddressed = {unknown_unit, 0, {}, {}};
        unit.cells = unknown_unit;
    }
    rcom_cells_ = unknown_cells(measured_rcom_columns());
}

void measured_state::take(const decoded_frame& frame) {
    learn_addresses(frame.addresses);
    if (frame.packet.is_ncom())
        take_ncom(frame);
    take_rcom(frame);
    if (frame.packet.kind == packet_kind::range)
        take_range(frame);
}

const std::vector<cell>& measured_state::of_unit(std::size_t unit) {
    sender_state& from = sender_of(unit);
    if (unit != hunter)
        compare_with_hunter(from);
    return from.cells;
}

/// Keeps what a sender has brought when it becomes, or ceases to be, a unit.
void measured_state::learn_addresses(const known_addresses& addresses) {
    for (std::size_t i = 0; i < unit_count; ++i) {
        unit_state& unit = units_[i];
        if (unit.address == addresses[i])
            continue;
        if (!unit.address && addresses[i])
            senders_.try_emplace(*addresses[i], unit.unaddressed);
        unit.address = addresses[i];
    }
}

measured_state::sender_state& measured_state::sender(std::uint32_t address) {
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

measured_state::sender_state& measured_state::sender_of(std::size_t unit) {
    unit_state& state = units_[unit];
    return state.address ? sender(*state.address) : state.unaddressed;
}

void measured_state::take_ncom(const decoded_frame& frame) {
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
    unit_fields_.copy_packet(origin_packet::ncom, package->record, from.cells);
    take_channel(from, channel, package->record);
    take_packet(from, frame.packet);
    calculate_curvature(from.cells);
}

/// Takes what the view computes from the packet alone.
void measured_state::take_packet(sender_state& sender, const received_packet& packet) {
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
    cells[at().packet_count] = whole(++sender.packets);
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

void measured_state::take_channel(sender_state& sender, std::uint8_t channel,
                                  record_bytes record) const {
    std::vector<cell>& cells = sender.cells;
    unit_fields_.copy_channel(origin_packet::ncom, channel, record, cells);
    const auto horizontal = [&](std::size_t north) {
        return cell_of(root_of_squares(number_in(cells[north]),
                                       number_in(cells[north + 1]))); // east is the next column
    };
    if (channel == 3)
        cells[at().position_accuracy_horizontal] = horizontal(at().position_accuracy);
    if (channel == 4)
        cells[at().velocity_accuracy_horizontal] = horizontal(at().velocity_accuracy);
    if (channel == 16 && number_in(cells[at().utc_offset_valid]) == 0.0)
        cells[at().utc_offset] = unknown_number;
}

void measured_state::take_range(const decoded_frame& frame) {
    const std::uint8_t channel = frame.packet.status_channel;
    const auto& packet = frame.packages.packet;
    if (!packet || !frame.packages.rcom)
        return; // about the hunter
    std::vector<cell>& cells = units_[packet->unit].cells;
    unit_fields_.copy_packet(origin_packet::ext_range, packet->record, cells);
    unit_fields_.copy_channel(origin_packet::ext_range, channel, packet->record, cells);
    for (const std::size_t column : {at().ttc_longitudinal, at().ttc_lateral})
        if (!(number_in(cells[column]) > 0.0))
            cells[column] = unknown_number; // not approaching

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

void measured_state::take_rcom(const decoded_frame& frame) {
    if (!frame.packages.rcom)
        return;
    const record_bytes record = *frame.packages.rcom;
    const std::uint8_t channel = frame.packet.status_channel;
    rcom_fields_.copy_packet(origin_packet::rcom, record, rcom_cells_);
    if (frame.packet.kind == packet_kind::lane) {
        rcom_fields_.copy_packet(origin_packet::lane, record, rcom_cells_);
        rcom_fields_.copy_channel(origin_packet::lane, channel, record, rcom_cells_);
    }
    if (frame.packet.kind != packet_kind::range)
        return;
    rcom_fields_.copy_packet(origin_packet::ext_range, record, rcom_cells_);
    rcom_fields_.copy_channel(origin_packet::ext_range, channel, record, rcom_cells_);
    static const std::size_t velocity = index_of(measured_rcom_columns(), "velocity_lateral");
    static const std::size_t kmh = index_of(measured_rcom_columns(), "velocity_lateral_kmh");
    rcom_cells_[kmh] = cell_of(number_in(rcom_cells_[velocity]) * kmh_per_mps);
}

/// Calculates the differences between a target and the hunter. Angles are the hunter's minus the
/// target's, like those of the record.
void measured_state::compare_with_hunter(sender_state& target) {
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

} // namespace rtrange
