#include "tools/rtrange/report/report_columns.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace rtrange {

namespace {

constexpr double no_value = std::numeric_limits<double>::quiet_NaN();

/// How the page holds a column.
enum class storage : std::uint8_t { doubles, floats, runs_of_floats };

/// Fields of the default plots, by the kind of row that updates them. Key figures are made of the
/// exact ones: floats would round some of them differently from the tables.
constexpr std::string_view exact_navigation_fields[]{"vehicle_velocity_x_kmh", "accel_x", "accel_y",
                                                     "rate_z"};
constexpr std::string_view navigation_fields[]{"heading"};
constexpr std::string_view exact_range_fields[]{"range_longitudinal", "range_lateral",
                                                "range_rate_longitudinal", "ttc_longitudinal"};
constexpr std::string_view range_fields[]{"range_rate_lateral"};
/// Fields for judging the data. Their values rarely change.
constexpr std::string_view quality_fields[]{"navigation_status", "position_mode",
                                            "velocity_mode",     "orientation_mode",
                                            "satellites",        "position_accuracy_horizontal",
                                            "differential_age",  "position_accuracy_down",
                                            "checksum_error"};

/// In records, the smallest and the largest double mean "no value".
double without_markers(double value) {
    using limits = std::numeric_limits<double>;
    return value == limits::min() || std::abs(value) == limits::max() ? no_value : value;
}

double number(cell_type type, cell content) {
    switch (type) {
    case cell_type::s16:
    case cell_type::s32:
    case cell_type::s64:
        return static_cast<double>(static_cast<std::int64_t>(content));
    case cell_type::f64:
    case cell_type::number:
    case cell_type::whole_number:
        return without_markers(number_in(content));
    default:
        return static_cast<double>(content);
    }
}

/// The column with this name, and its index.
std::optional<std::size_t> find(std::span<const column> table, std::string_view name) {
    const auto found =
        std::ranges::find_if(table, [&](const column& entry) { return entry.name == name; });
    if (found == table.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - table.begin());
}

void add_column(std::span<const column> table, std::string_view name, bool is_double,
                std::vector<report_column>& columns) {
    const auto index = find(table, name);
    if (!index)
        return;
    const column& entry = table[*index];
    columns.push_back({entry.name, entry.unit, entry.meaning, is_double,
                       [i = *index, type = entry.type](const table_row& row) {
                           return number(type, row.cells[i]);
                       }});
}

void add_columns(std::span<const column> table, std::span<const std::string_view> names,
                 storage stored_as, std::vector<report_column>& columns) {
    for (const std::string_view name : names) {
        const std::size_t before = columns.size();
        add_column(table, name, stored_as == storage::doubles, columns);
        if (columns.size() > before)
            columns.back().in_runs = stored_as == storage::runs_of_floats;
    }
}

std::vector<report_column> position_columns(std::span<const column> table, local_plane& plane) {
    const auto latitude = find(table, "latitude");
    const auto longitude = find(table, "longitude");
    if (!latitude || !longitude)
        return {};
    const auto position = [&plane, lat = *latitude, lon = *longitude](const table_row& row) {
        return plane.at(number_in(row.cells[lat]), number_in(row.cells[lon]));
    };
    return {{"east", "m", "position", false,
             [position](const table_row& row) { return position(row).east; }},
            {"north", "m", "position", false,
             [position](const table_row& row) { return position(row).north; }}};
}

} // namespace

std::vector<std::string> default_fields() {
    std::vector<std::string> names{"latitude", "longitude"};
    for (const std::span<const std::string_view> fields :
         {std::span<const std::string_view>(exact_navigation_fields),
          std::span<const std::string_view>(navigation_fields),
          std::span<const std::string_view>(quality_fields),
          std::span<const std::string_view>(exact_range_fields),
          std::span<const std::string_view>(range_fields)})
        names.insert(names.end(), fields.begin(), fields.end());
    return names;
}

std::vector<report_column> default_columns(std::span<const column> table, row_kind kind,
                                           local_plane& plane) {
    std::vector<report_column> columns = position_columns(table, plane);
    if (kind == row_kind::range) {
        add_columns(table, exact_range_fields, storage::doubles, columns);
        add_columns(table, range_fields, storage::floats, columns);
        return columns;
    }
    add_columns(table, exact_navigation_fields, storage::doubles, columns);
    add_columns(table, navigation_fields, storage::floats, columns);
    add_columns(table, quality_fields, storage::runs_of_floats, columns);
    return columns;
}

std::vector<report_column> columns_of(std::span<const column> table,
                                      std::span<const std::string> names, row_kind kind,
                                      local_plane& plane) {
    std::vector<report_column> columns;
    if (kind != row_kind::rcom)
        columns = position_columns(table, plane);
    // As doubles: large integers, latitudes and longitudes need the precision.
    for (const std::string& name : names)
        add_column(table, name, true, columns);
    return columns;
}

} // namespace rtrange
