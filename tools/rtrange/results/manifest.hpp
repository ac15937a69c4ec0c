// The list of the files that rtrange has written to a folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace rtrange {

/// A text file: its first line says what it is, each other line is the name of a file.
inline constexpr const char* manifest_name = "rtrange-files.txt";

/// The names that the manifest of a folder lists; none if there is no manifest. Lines other than
/// names of CSV files in this folder are left out. Throws failure when the file is not a manifest.
std::vector<std::string> read_manifest(const std::filesystem::path& folder);

/// Writes a manifest to a file. Throws failure when that is not possible.
void write_manifest(const std::filesystem::path& file, const std::vector<std::string>& names);

} // namespace rtrange
