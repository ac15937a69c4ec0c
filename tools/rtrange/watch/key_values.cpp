#include "tools/rtrange/watch/key_values.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace rtrange {
namespace {

/// The value of the column with this name; NaN if there is none.
row_rating value_of(std::string_view name, std::span<const std::string> columns) {
    const auto index = static_cast<std::size_t>(std::ranges::find(columns, name) - columns.begin());
    return [index](std::span<const double> row) {
        return index < row.size() ? row[index] : std::numeric_limits<double>::quiet_NaN();
    };
}

row_rating distance(std::span<const std::string> columns) {
    const row_rating x = value_of("range_longitudinal", columns);
    const row_rating y = value_of("range_lateral", columns);
    return [x, y](std::span<const double> row) {
        return std::sqrt(x(row) * x(row) + y(row) * y(row));
    };
}

row_rating closing_speed(std::span<const std::string> columns) {
    const row_rating range = value_of("range_longitudinal", columns);
    const row_rating rate = value_of("range_rate_longitudinal", columns);
    return [range, rate](std::span<const double> row) {
        return range(row) < 0.0 ? rate(row) : -rate(row);
    };
}

void add_extremes(const row_rating& value, std::vector<row_rating>& ratings) {
    ratings.push_back(value);
    ratings.push_back([value](std::span<const double> row) { return -value(row); });
}

} // namespace

std::vector<row_rating> key_ratings(row_kind kind, std::span<const std::string> columns) {
    std::vector<row_rating> ratings;
    if (kind == row_kind::navigation)
        for (const std::string_view name :
             {"vehicle_velocity_x_kmh", "accel_x", "accel_y", "rate_z"})
            add_extremes(value_of(name, columns), ratings);
    if (kind == row_kind::range) {
        for (const std::string_view name :
             {"range_longitudinal", "range_lateral", "ttc_longitudinal", "range_rate_longitudinal"})
            add_extremes(value_of(name, columns), ratings);
        add_extremes(distance(columns), ratings);
        add_extremes(closing_speed(columns), ratings);
    }
    return ratings;
}

} // namespace rtrange
