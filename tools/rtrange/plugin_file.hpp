// The plug-in file.
#pragma once

#include <filesystem>

namespace rtrange {

/// The plug-in installed with this program: in the folder `plugin` of the package, in `lib/rtrange`
/// of an installation by apt, or, in a build tree, in the folder of the program.
std::filesystem::path default_plugin_file();

} // namespace rtrange
