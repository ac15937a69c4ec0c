// The file name of the plug-in's own library.
#pragma once

#include <array>

namespace zel::extensibility::log {

/// Room for the library's path: the platform's limit of 260 characters.
using module_path = std::array<char, 260>;

/// The part of `path` after its last slash or backslash; the whole path without one.
const char* last_path_component(const char* path);

/// File name, without directory, of the library that holds this code. `path` is the storage of the
/// result and comes in zeroed.
const char* module_name(module_path& path);

} // namespace zel::extensibility::log
