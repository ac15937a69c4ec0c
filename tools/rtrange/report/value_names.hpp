// The names of coded values for the pages.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace rtrange {

/// The names of values by field, then by value.
nlohmann::json value_names_as_json();

} // namespace rtrange
