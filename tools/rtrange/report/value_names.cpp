#include "tools/rtrange/report/value_names.hpp"

#include <span>
#include <string>

#include <nlohmann/json.hpp>

#include "zel_rt_range_formatter/records/value_names.hpp"

namespace rtrange {

using nlohmann::json;

json value_names_as_json() {
    using namespace zel::toolbox::rt_range;
    const auto as_json = [](std::span<const value_name> names) {
        json result = json::object();
        for (const auto& [value, name] : names)
            result[std::to_string(value)] = name;
        return result;
    };
    return {{"navigation_status", as_json(navigation_status_names())},
            {"position_mode", as_json(mode_names())},
            {"velocity_mode", as_json(mode_names())},
            {"orientation_mode", as_json(mode_names())}};
}

} // namespace rtrange
