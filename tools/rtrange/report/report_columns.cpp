#include "tools/rtrange/report/report_columns.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr double no_value = std::numeric_limits<double>::quiet_NaN();

/// Fields of the default plots, by the kind of row that updates them.
constexpr std::string_view navigation_fields[]{"vehicle_velocity_x_kmh", "accel_x", "accel_y",
                                               "rate_z", "heading"};
/// Fields for judging the data. Their values rarely change.
constexpr std::string_view quality_fields[]{"navigation_status", "position_mode",
                                            "velocity_mode",     "orientation_mode",
                                            "satellites",        "position_accuracy_horizontal",
                                            "differential_age",  "position_accuracy_down",
                                            "checksum_error"};
constexpr std::string_view range_fields[]{"range_longitudinal", "range_lateral",
                                          "range_rate_longitudinal", "range_rate_lateral",
                                          "ttc_longitudinal"};

ncom_unit_record unit_record(const record_row& row) {
    ncom_unit_record record;
    std::memcpy(&record, row.record.data(), sizeof(record));
    return record;
}

double number(const field& entry, const record_row& row) {
    std::uint64_t content = 0;
    std::memcpy(&content, row.record.data() + entry.offset, size_of(entry.type));
    switch (entry.type) {
    case field_type::s16:
        return static_cast<std::int16_t>(content);
    case field_type::s32:
        return static_cast<std::int32_t>(content);
    case field_type::s64:
        return static_cast<double>(static_cast<std::int64_t>(content));
    case field_type::f64:
        return std::bit_cast<double>(content);
    default:
        return static_cast<double>(content);
    }
}

/// In records, the smallest and the largest double mean "no value".
double without_markers(double value) {
    using limits = std::numeric_limits<double>;
    return value == limits::min() || std::abs(value) == limits::max() ? no_value : value;
}

bool is_about_range(std::string_view name) {
    return name.starts_with("range_") || name.starts_with("relative_range_") ||
           name.starts_with("ttc_");
}

bool has_range(const ncom_unit_record& record) {
    return record.range_longitudinal != 0.0 || record.range_lateral != 0.0 ||
           record.range_rate_longitudinal != 0.0 || record.range_rate_lateral != 0.0;
}

/// A unit's record is zero until packets fill it. Such zeros are not values.
double without_initial_zeros(double value, bool about_range, const record_row& row) {
    if (value != 0.0)
        return value;
    const ncom_unit_record record = unit_record(row);
    const bool filled = about_range ? has_range(record) : record.endpoint.source_ip != 0;
    return filled ? value : no_value;
}

report_column column_of(const field& entry, row_kind kind, bool is_double) {
    report_column column{entry.name, entry.unit, entry.meaning, is_double, {}};
    if (kind == row_kind::rcom)
        column.value = [entry](const record_row& row) {
            return without_markers(number(entry, row));
        };
    else
        column.value = [entry, about_range = is_about_range(entry.name)](const record_row& row) {
            return without_markers(without_initial_zeros(number(entry, row), about_range, row));
        };
    return column;
}

void append_columns(std::span<const std::string_view> names, row_kind kind, bool in_runs,
                    std::vector<report_column>& columns) {
    for (const field& entry : ncom_fields()) {
        if (std::ranges::find(names, std::string_view(entry.name)) == names.end())
            continue;
        columns.push_back(column_of(entry, kind, false));
        columns.back().in_runs = in_runs;
    }
}

std::vector<report_column> position_columns(local_plane& plane) {
    const auto position = [&plane](const record_row& row) {
        const ncom_unit_record record = unit_record(row);
        return plane.at(record.latitude, record.longitude);
    };
    return {{"east", "m", "position", false,
             [position](const record_row& row) { return position(row).east; }},
            {"north", "m", "position", false,
             [position](const record_row& row) { return position(row).north; }}};
}

} // namespace

std::string_view name_of(row_kind kind) {
    switch (kind) {
    case row_kind::navigation:
        return "navigation";
    case row_kind::range:
        return "range";
    case row_kind::rcom:
        return "rcom";
    }
    return "";
}

std::vector<report_column> default_columns(row_kind kind, local_plane& plane) {
    std::vector<report_column> columns = position_columns(plane);
    if (kind == row_kind::navigation) {
        append_columns(navigation_fields, kind, false, columns);
        append_columns(quality_fields, kind, true, columns);
    } else {
        append_columns(range_fields, kind, false, columns);
    }
    return columns;
}

std::vector<report_column> columns_of(std::span<const field> fields, row_kind kind,
                                      local_plane& plane) {
    std::vector<report_column> columns;
    if (kind != row_kind::rcom)
        columns = position_columns(plane);
    // As doubles: large integers, latitudes and longitudes need the precision.
    for (const field& entry : fields)
        columns.push_back(column_of(entry, kind, true));
    return columns;
}

} // namespace rtrange
