// rtrange info: shows the metadata and formatters of a plug-in.
#pragma once

#include <filesystem>

namespace rtrange {

/// Prints the metadata of a plug-in file, its formatters, and the services of their instances.
void print_info(const std::filesystem::path& plugin_file);

} // namespace rtrange
