#include "tools/rtrange/tables/key_figures.hpp"

#include <cmath>

#include <nlohmann/json.hpp>

namespace rtrange {

std::string_view name_of(extreme which) {
    switch (which) {
    case extreme::lowest:
        return "lowest";
    case extreme::highest:
        return "highest";
    case extreme::least_magnitude:
        return "least_magnitude";
    case extreme::greatest_magnitude:
        return "greatest_magnitude";
    }
    return "";
}

double rank_of(double value, extreme which) {
    switch (which) {
    case extreme::lowest:
        return -value;
    case extreme::highest:
        return value;
    case extreme::least_magnitude:
        return -std::abs(value);
    case extreme::greatest_magnitude:
        break;
    }
    return std::abs(value);
}

double distance_of(double longitudinal, double lateral) {
    return std::sqrt(longitudinal * longitudinal + lateral * lateral);
}

double closing_speed_of(double range, double rate) {
    const double sign = range > 0.0 ? 1.0 : range < 0.0 ? -1.0 : range;
    return -rate * sign;
}

std::span<const key_figure> key_figures() {
    using enum extreme;
    constexpr row_kind range = row_kind::range, navigation = row_kind::navigation;
    static constexpr key_figure figures[]{
        // With its sign: a target that has been passed is behind.
        {"smallest_longitudinal_range", "Smallest longitudinal range", "m", "range_longitudinal",
         range, least_magnitude, 2},
        {"smallest_time_to_collision", "Smallest time to collision", "s", "ttc_longitudinal", range,
         lowest, 2},
        {"largest_closing_speed", "Largest closing speed", "m/s", "closing_speed", range, highest,
         2},
        {"smallest_total_distance", "Smallest total distance", "m", "distance", range, lowest, 2},
        {"highest_speed", "Highest speed", "km/h", "vehicle_velocity_x_kmh", navigation, highest,
         1},
        {"lowest_speed", "Lowest speed", "km/h", "vehicle_velocity_x_kmh", navigation, lowest, 1},
        {"strongest_braking", "Strongest braking", "m/s²", "accel_x", navigation, lowest, 2},
        {"strongest_lateral_acceleration", "Strongest lateral acceleration", "m/s²", "accel_y",
         navigation, greatest_magnitude, 2},
        {"largest_yaw_rate", "Largest yaw rate", "deg/s", "rate_z", navigation, greatest_magnitude,
         2},
    };
    return figures;
}

nlohmann::json key_figures_as_json(std::string_view view) {
    nlohmann::json result = nlohmann::json::array();
    if (view == "record")
        return result;
    for (const key_figure& figure : key_figures())
        result.push_back({{"name", figure.name},
                          {"title", figure.title},
                          {"unit", figure.unit},
                          {"kind", name_of(figure.kind)},
                          {"value", figure.value},
                          {"extreme", name_of(figure.which)},
                          {"decimals", figure.decimals}});
    return result;
}

} // namespace rtrange
