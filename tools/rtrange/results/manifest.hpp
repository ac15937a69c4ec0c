// The list of the files that rtrange has written to a folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace rtrange {

/// A text file: its first line says what it is, each other line is the name of a file, its size and
/// the time at which it was written.
inline constexpr const char* manifest_name = "rtrange-files.txt";

/// A file as rtrange has written it. Another size or time means that it has been changed since.
struct listed_file {
    std::string name;
    std::uint64_t size;
    std::int64_t time; ///< of the last change, in nanoseconds of the file system's clock

    friend bool operator==(const listed_file&, const listed_file&) = default;
};

/// A file as it is now. Throws std::filesystem::filesystem_error when there is none.
listed_file listed(const std::filesystem::path& file);

/// The files that the manifest of a folder lists; none if there is no manifest. Lines about other
/// than CSV files in this folder are left out. Throws failure when the file is not a manifest.
std::vector<listed_file> read_manifest(const std::filesystem::path& folder);

/// Writes a manifest to a file. Throws failure when that is not possible.
void write_manifest(const std::filesystem::path& file, const std::vector<listed_file>& files);

} // namespace rtrange
