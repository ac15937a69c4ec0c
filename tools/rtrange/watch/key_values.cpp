#include "tools/rtrange/watch/key_values.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

#include "tools/rtrange/tables/key_figures.hpp"

namespace rtrange {
namespace {

/// The value of the column with this name; NaN if there is none.
row_rating value_of(std::string_view name, std::span<const std::string> columns) {
    const auto index = static_cast<std::size_t>(std::ranges::find(columns, name) - columns.begin());
    return [index](std::span<const double> row) {
        return index < row.size() ? row[index] : std::numeric_limits<double>::quiet_NaN();
    };
}

/// The value that a figure is taken from.
row_rating value_of(const key_figure& figure, std::span<const std::string> columns) {
    const row_rating x = value_of("range_longitudinal", columns);
    if (figure.value == "distance")
        return [x, y = value_of("range_lateral", columns)](std::span<const double> row) {
            return distance_of(x(row), y(row));
        };
    if (figure.value == "closing_speed")
        return [x, rate = value_of("range_rate_longitudinal", columns)](
                   std::span<const double> row) { return closing_speed_of(x(row), rate(row)); };
    return value_of(figure.value, columns);
}

} // namespace

std::vector<row_rating> key_ratings(row_kind kind, std::span<const std::string> columns) {
    std::vector<row_rating> ratings;
    for (const key_figure& figure : key_figures())
        if (figure.kind == kind)
            ratings.emplace_back([value = value_of(figure, columns),
                                  which = figure.which](std::span<const double> row) {
                return rank_of(value(row), which);
            });
    return ratings;
}

} // namespace rtrange
