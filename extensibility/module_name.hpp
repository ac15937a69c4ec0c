// The file name of the plug-in library.
#pragma once

#include <array>

namespace zel::extensibility::log {

/// Buffer for the path of the library: 260 characters, the limit of the platform.
using module_path = std::array<char, 260>;

/// The part of `path` after its last slash or backslash; the whole path if it has none.
const char* last_path_component(const char* path);

/// File name, without directory, of the library that contains this code. `path` holds the result
/// and must be zeroed before the call.
const char* module_name(module_path& path);

} // namespace zel::extensibility::log
