#include "tools/rtrange/tables/measured_columns.hpp"

#include <algorithm>
#include <array>
#include <iterator>

#include "tools/rtrange/tables/received_packet.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// A column that replaces that of the field of the same name, or follows the field named `after`.
struct computed_column {
    const char* name;
    const char* after;
    const char* unit;
    cell_type type;
    field_origin origin;
    const char* meaning;
};

constexpr cell_type number = cell_type::number;
constexpr cell_type whole = cell_type::whole_number;

const computed_column computed_unit_columns[] = {
    {"packet_count", "", "", whole, origins::ncom,
     "NCOM packets of this sender, direct or wrapped, since the decoder started"},
    {"latitude", "", "deg", number, origins::ncom_or_range_channel(8),
     "latitude, datum not known; of a target also from RCOM status channel 8, in rows of range "
     "packets"},
    {"longitude", "", "deg", number, origins::ncom_or_range_channel(8),
     "longitude, datum not known; of a target also from RCOM status channel 8, in rows of range "
     "packets"},
    {"altitude", "", "m", number, origins::ncom_or_range_channel(10),
     "altitude, reference not known; of a target also from RCOM status channel 10, in rows of "
     "range packets"},
    {"vehicle_velocity_x", "", "m/s", number, origins::ncom,
     "velocity over ground, forward: computed with the heading of the same packet"},
    {"vehicle_velocity_x_kmh", "", "km/h", number, origins::ncom, "vehicle_velocity_x in km/h"},
    {"vehicle_velocity_y", "", "m/s", number, origins::ncom,
     "velocity over ground, to the left: computed with the heading of the same packet"},
    {"vehicle_velocity_y_kmh", "", "km/h", number, origins::ncom, "vehicle_velocity_y in km/h"},
    {"heading", "", "deg", number, origins::ncom_or_range_channel(10),
     "heading, 0 to 360: 0 is north, 90 is east; of a target also from RCOM status channel 10, in "
     "rows of range packets"},
    {"curvature", "", "1/m", number, origins::ncom_and_channel(4),
     "rate_z over speed, positive in a bend to the left; 0 unless the speed exceeds "
     "velocity_accuracy_horizontal and velocity_accuracy_age is below 150"},
    {"relative_accel_x", "", "m/s²", number, origins::ncom_and_hunter_ncom,
     "accel_x of this unit minus that of the hunter"},
    {"relative_accel_y", "", "m/s²", number, origins::ncom_and_hunter_ncom,
     "accel_y of this unit minus that of the hunter"},
    {"relative_accel_z", "", "m/s²", number, origins::ncom_and_hunter_ncom,
     "accel_z of this unit minus that of the hunter"},
    {"relative_heading", "", "deg", number, origins::ncom_and_hunter_ncom,
     "heading of the hunter minus that of this unit, -180 to 180"},
    {"relative_pitch", "", "deg", number, origins::ncom_and_hunter_ncom,
     "pitch of the hunter minus that of this unit, -180 to 180"},
    {"relative_roll", "", "deg", number, origins::ncom_and_hunter_ncom,
     "roll of the hunter minus that of this unit, -180 to 180"},
    {"relative_rate_x", "", "deg/s", number, origins::ncom_and_hunter_ncom,
     "rate_x of this unit minus that of the hunter"},
    {"relative_rate_y", "", "deg/s", number, origins::ncom_and_hunter_ncom,
     "rate_y of this unit minus that of the hunter"},
    {"relative_rate_z", "", "deg/s", number, origins::ncom_and_hunter_ncom,
     "rate_z of this unit minus that of the hunter"},
    {"gps_minutes", "", "min", whole, origins::ncom_channel(0),
     "minutes since the GPS epoch, from status channel 0, incremented at each minute roll-over"},
    {"gps_time_us", "time_in_minute_ms", "us", whole, origins::ncom_channel(0),
     "GPS time of the packet in microseconds since 1970, without leap seconds: 18 s ahead of UTC "
     "since 2017; subtract utc_offset seconds for UTC"},
    {"position_accuracy_horizontal", "", "m", number, origins::ncom_channel(3),
     "root of the sum of the squares of position_accuracy_north and position_accuracy_east"},
    {"velocity_accuracy_horizontal", "", "m/s", number, origins::ncom_channel(4),
     "root of the sum of the squares of velocity_accuracy_north and velocity_accuracy_east"},
    {"ttc_longitudinal", "", "s", number, origins::ext_range,
     "longitudinal time to collision at constant range rate; empty unless approaching"},
    {"ttc_lateral", "", "s", number, origins::ext_range,
     "lateral time to collision at constant range rate; empty unless approaching"},
    {"output_displacement_y", "", "m", number, origins::ncom_channel(26),
     "status channel 26: lever arm of the output point, to the right"},
    {"output_displacement_z", "", "m", number, origins::ncom_channel(26),
     "status channel 26: lever arm of the output point, down"},
    {"position_mode", "satellites", "", whole, origins::ncom_channel(0),
     "status channel 0: position mode; see its values"},
    {"orientation_mode", "", "", whole, origins::ncom_channel(0),
     "status channel 0: orientation mode; see its values"},
    {"rcom_channel_value", "", "", number, origins::range_channel(0),
     "RCOM status channel 0: bytes 6 and 7 divided by 1000; meaning not known; empty if there is "
     "no value"},
    {"ncom_status_channel", "", "", whole, origins::ncom, "status channel of the NCOM packet"},
    {"checksum_error", "checksum_3", "", whole, origins::ncom,
     "1 if one of the three checksums of the NCOM packet is wrong"},
};

const computed_column computed_rcom_columns[] = {
    {"channel_0_scaled", "", "", number, origins::range_channel(0),
     "status channel 0: bytes 6 and 7 divided by 1000; empty if there is no value"},
    {"channel_5_scaled", "", "", number, origins::range_channel(5),
     "status channel 5: bytes 0 and 1 divided by 1000; empty if there is no value"},
    {"velocity_lateral_kmh", "", "km/h", number, origins::ext_range, "velocity_lateral in km/h"},
};

/// The meaning of a column that is copied from the record, in other words than there.
struct rewording {
    const char* name;
    const char* meaning;
};

const rewording rewordings[] = {
    {"accel_x", "acceleration, forward"},
    {"accel_y", "acceleration, to the left"},
    {"accel_z", "acceleration, up; whether it contains gravity is not known"},
    {"level_accel_x", "accel_* turned by pitch and roll: horizontal, forward"},
    {"level_accel_y", "accel_* turned by pitch and roll: horizontal, to the left"},
    {"level_accel_z", "accel_* turned by pitch and roll: vertical, up"},
    {"rate_x", "roll rate: angular rate about the forward axis, right side down is positive"},
    {"rate_y", "pitch rate: angular rate about the axis to the left, nose down is positive"},
    {"rate_z", "yaw rate: angular rate about the upward axis, positive while turning left"},
    {"velocity_north", "velocity over ground, positive to the north"},
    {"velocity_east", "velocity over ground, positive to the west: negated, as in the record"},
    {"velocity_down", "vertical velocity, positive upward: negated, as in the record"},
    {"pitch", "pitch, positive with the nose down"},
    {"roll", "roll, positive with the right side down"},
    {"unit_value_a", "extended range packet: target_value_a; meaning not known"},
    {"unit_value_b", "extended range packet: target_value_b; meaning not known"},
    {"unit_value_c", "extended range packet: target_value_c; meaning not known"},
    {"utc_offset", "status channel 16: seconds that GPS time is ahead of UTC; empty unless "
                   "utc_offset_valid is 1"},
    {"position_accuracy_north", "status channel 3: accuracy of the position to the north, as the "
                                "unit estimates it"},
    {"position_accuracy_east", "status channel 3: accuracy of the position to the east, as the "
                               "unit estimates it"},
    {"position_accuracy_down", "status channel 3: accuracy of the altitude, as the unit estimates "
                               "it"},
    {"velocity_accuracy_north", "status channel 4: accuracy of velocity_north, as the unit "
                                "estimates it"},
    {"velocity_accuracy_east", "status channel 4: accuracy of velocity_east, as the unit estimates "
                               "it"},
    {"velocity_accuracy_down", "status channel 4: accuracy of velocity_down, as the unit estimates "
                               "it"},
    {"position_accuracy_age", "status channel 3: age of the accuracies; its unit is not known"},
    {"velocity_accuracy_age",
     "status channel 4: age of the accuracies; its unit is not known; 150 or more is outdated"},
    {"heading_accuracy", "status channel 5: accuracy of the heading, as the unit estimates it"},
    {"pitch_accuracy", "status channel 5: accuracy of the pitch, as the unit estimates it"},
    {"roll_accuracy", "status channel 5: accuracy of the roll, as the unit estimates it"},
    {"orientation_accuracy_age", "status channel 5: age of the accuracies; its unit is not known"},
    {"primary_antenna_age", "status channel 12: age of the position; its unit is not known"},
    {"primary_antenna_accuracy_age",
     "status channel 14: age of the accuracies; its unit is not known"},
    {"dual_antenna_age", "status channel 13: age of the orientation; its unit is not known"},
    {"dual_antenna_accuracy_age",
     "status channel 15: age of the accuracies; its unit is not known"},
    {"output_displacement_age", "status channel 26: age of the lever arm; its unit is not known"},
    {"rcom_channel_17_a", "RCOM status channel 17, first value; meaning not known"},
    {"rcom_channel_17_b", "RCOM status channel 17, second value; meaning not known"},
    {"rcom_channel_17_c", "RCOM status channel 17, third value; meaning not known"},
    {"range_lateral", "lateral range from the hunter, positive if the target is to the left"},
    {"range_longitudinal", "longitudinal range from the hunter, positive if the target is ahead"},
    {"range_rate_lateral", "change of range_lateral per second; to the left is positive"},
    {"range_rate_longitudinal",
     "change of range_longitudinal per second; negative while a target ahead comes closer"},
    {"checksum_1", "first checksum as received; see checksum_error"},
    {"checksum_2", "second checksum as received; see checksum_error"},
    {"checksum_3", "third checksum as received; see checksum_error"},
    {"differential_age", "status channel 20: age of the differential corrections in whole seconds"},
    {"velocity_longitudinal", "longitudinal velocity; of which vehicle is not known"},
    {"velocity_lateral", "lateral velocity, positive to the left; of which vehicle is not known"},
    {"acceleration_longitudinal", "longitudinal acceleration; of which vehicle is not known"},
    {"acceleration_lateral",
     "lateral acceleration, positive to the left; of which vehicle is not known"},
    {"target_latitude", "status channel 8: latitude of the target in target_number at that time"},
    {"target_longitude", "status channel 8: longitude of the target in target_number at that time"},
    {"target_altitude", "status channel 10: altitude of the target in target_number at that time"},
    {"target_heading", "status channel 10: heading of the target in target_number at that time"},
};

/// Fields that are kept for recordings only: unused ones, duplicates of computed columns, and
/// accelerated times to collision, which may lie in the past.
constexpr std::array left_out{
    "vehicle_velocity_unused", "vehicle_velocity_unused_kmh",  "utc_time_us",
    "gps_time_valid",          "ttc_longitudinal_accelerated", "ttc_lateral_accelerated"};

bool is_left_out(std::string_view name) {
    return name.starts_with("reserved_") || name.starts_with("sample_") ||
           std::ranges::find(left_out, name) != left_out.end();
}

cell_type measured_type(field_type type) {
    if (type == field_type::f64)
        return cell_type::number;
    return type == field_type::ipv4 ? cell_type::address : cell_type::whole_number;
}

/// The hunter has no range to itself and does not differ from itself.
bool is_of_hunter(std::string_view name, const field_origin& origin) {
    return origin.first.packet != origin_packet::ext_range && !name.starts_with("relative_");
}

measured_column column_of(const computed_column& computed, const field* stored) {
    return {{computed.name, computed.type, computed.unit, computed.meaning},
            computed.origin,
            stored,
            is_of_hunter(computed.name, computed.origin)};
}

measured_column column_of(const field& stored) {
    const auto other =
        std::ranges::find(rewordings, std::string_view(stored.name), &rewording::name);
    const char* const meaning = other == std::end(rewordings) ? stored.meaning : other->meaning;
    return {{stored.name, measured_type(stored.type), stored.unit, meaning},
            stored.origin,
            &stored,
            is_of_hunter(stored.name, stored.origin)};
}

std::vector<measured_column> columns_of(std::span<const field> fields,
                                        std::span<const computed_column> computed) {
    std::vector<measured_column> columns;
    for (const field& entry : fields) {
        const auto replacement =
            std::ranges::find(computed, std::string_view(entry.name), &computed_column::name);
        if (replacement != computed.end())
            columns.push_back(column_of(*replacement, &entry));
        else if (!is_left_out(entry.name))
            columns.push_back(column_of(entry));
        for (const computed_column& added : computed)
            if (std::string_view(added.after) == entry.name)
                columns.push_back(column_of(added, nullptr));
    }
    return columns;
}

} // namespace

const std::vector<measured_column>& measured_unit_columns() {
    static const auto columns = columns_of(ncom_fields(), computed_unit_columns);
    return columns;
}

const std::vector<measured_column>& measured_rcom_columns() {
    static const auto columns = columns_of(rcom_fields(), computed_rcom_columns);
    return columns;
}

std::vector<field> sample_fields() {
    std::vector<field> fields;
    std::ranges::copy_if(ncom_fields(), std::back_inserter(fields), [](const field& entry) {
        return std::string_view(entry.name).starts_with("sample_");
    });
    return fields;
}

std::span<const column> measured_leading_columns() {
    static constexpr column columns[]{
        {"reference_timestamp", cell_type::u64, "ns", "capture time since 1970"},
        {"time_s", cell_type::f64, "s", "capture time since the first frame of the run"},
        {"packet", cell_type::text, "",
         "kind of the packet that the row comes from: ncom, wrapped_ncom, range or lane", 12,
         packet_names},
    };
    return columns;
}

std::size_t index_of(const std::vector<measured_column>& columns, std::string_view name) {
    const auto found = std::ranges::find_if(
        columns, [&](const measured_column& entry) { return entry.shown.name == name; });
    return static_cast<std::size_t>(found - columns.begin());
}

} // namespace rtrange
