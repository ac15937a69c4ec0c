// The figures that decide whether a run counts.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

#include "tools/rtrange/tables/row_kind.hpp"

namespace rtrange {

/// Which value of a run a key figure is. Signs are kept.
enum class extreme : std::uint8_t { lowest, highest, least_magnitude, greatest_magnitude };

/// For example "least_magnitude".
std::string_view name_of(extreme which);

/// Higher for values that come closer to the extreme; NaN for an unknown value.
double rank_of(double value, extreme which);

/// The total distance of a target with these longitudinal and lateral ranges.
double distance_of(double longitudinal, double lateral);

/// The closing speed of a target at this longitudinal range, which changes at this rate: positive
/// while it comes closer. NaN if one of them is unknown.
double closing_speed_of(double range, double rate);

/// One figure of a unit over a run, or over a part of it.
struct key_figure {
    std::string_view name;  ///< for example "smallest_time_to_collision"
    std::string_view title; ///< for example "Smallest time to collision"
    std::string_view unit;
    /// A column of the view measured; or "distance", the root of the sum of the squares of
    /// range_longitudinal and range_lateral; or "closing_speed", the negated
    /// range_rate_longitudinal times the sign of range_longitudinal, positive while the target
    /// comes closer.
    std::string_view value;
    /// Of the rows that it is taken from: range (of a target), or navigation (of any unit).
    row_kind kind;
    extreme which;
    int decimals; ///< to show
};

/// The columns that all values are taken from or derived from.
inline constexpr const char* key_figure_columns[]{"range_longitudinal",
                                                  "range_lateral",
                                                  "range_rate_longitudinal",
                                                  "ttc_longitudinal",
                                                  "accel_x",
                                                  "vehicle_velocity_x_kmh",
                                                  "accel_y",
                                                  "rate_z"};

/// All key figures, in the order in which they are shown.
std::span<const key_figure> key_figures();

/// The key figures of a view as data for a page: an array of objects with the members above. Empty
/// for the view "record", which repeats values and has marks instead of unknown ones.
nlohmann::json key_figures_as_json(std::string_view view);

} // namespace rtrange
