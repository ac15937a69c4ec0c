// Where the plug-in is.
#pragma once

#include <filesystem>

namespace rtrange {

/// The plug-in that belongs to this program: in the folder `plugin` of the package, otherwise
/// beside the program, where the build leaves it.
std::filesystem::path default_plugin_file();

} // namespace rtrange
