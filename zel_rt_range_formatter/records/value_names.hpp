// The names of coded values in records.
#pragma once

#include <span>

namespace zel::toolbox::rt_range {

/// A value of a field and its name.
struct value_name {
    int value;
    const char* name;
};

/// The values of navigation_status, ascending. Values that are not listed are reserved.
std::span<const value_name> navigation_status_names();

/// The values of position_mode, velocity_mode and orientation_mode, ascending. Values that are not
/// listed are reserved.
std::span<const value_name> mode_names();

} // namespace zel::toolbox::rt_range
