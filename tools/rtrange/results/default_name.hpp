// Names of results that the user does not name.
#pragma once

#include <filesystem>
#include <string_view>

#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// The name, in the current folder, of what is decoded: that of the first capture, without its
/// extension, or that of the network interface; then the extension of the result, such as ".h5".
std::filesystem::path default_name(const run_options& run, std::string_view interface_name,
                                   std::string_view extension);

} // namespace rtrange
