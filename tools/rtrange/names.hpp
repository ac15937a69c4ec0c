// Names that the user gives.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rtrange {

/// Empty if the list contains the name; otherwise a message, which suggests the names that are
/// close to it, if there are any. `kind` says what is named: "field".
std::string fault_of_name(std::string_view kind, std::string_view name,
                          const std::vector<std::string_view>& names);

} // namespace rtrange
