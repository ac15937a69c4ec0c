// rtrange info: what a plug-in says about itself.
#pragma once

#include <filesystem>

namespace rtrange {

/// Prints the metadata of a plug-in file, its formatters, and the services of their instances.
void print_info(const std::filesystem::path& plugin_file);

} // namespace rtrange
