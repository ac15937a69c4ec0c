// Where the plug-in is.
#pragma once

#include <filesystem>

namespace rtrange {

/// The plug-in beside this program.
std::filesystem::path default_plugin_file();

} // namespace rtrange
