#include "tools/rtrange/results/manifest.hpp"

#include <chrono>
#include <fstream>
#include <sstream>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/results/staging.hpp"

namespace rtrange {
namespace {

constexpr std::string_view first_line =
    "Files that rtrange has written and 'rtrange decode --overwrite' may replace or remove:";

bool next_line(std::istream& stream, std::string& line) {
    if (!std::getline(stream, line))
        return false;
    if (line.ends_with('\r')) // of an editor
        line.pop_back();
    return true;
}

bool is_table_name(const std::filesystem::path& name) {
    return name == name.filename() && name.extension() == ".csv";
}

} // namespace

listed_file listed(const std::filesystem::path& file) {
    const auto time = std::filesystem::last_write_time(file).time_since_epoch();
    return {file.filename().string(), std::filesystem::file_size(file),
            std::chrono::duration_cast<std::chrono::nanoseconds>(time).count()};
}

std::vector<listed_file> read_manifest(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / manifest_name;
    const std::filesystem::file_type type = type_of(file);
    if (type == std::filesystem::file_type::not_found)
        return {};
    std::ifstream stream(file);
    std::string line;
    if (type != std::filesystem::file_type::regular || !next_line(stream, line) ||
        line != first_line)
        throw failure(fmt::format(
            "'{}' was not written by rtrange; rename it or choose another folder", file.string()));
    std::vector<listed_file> files;
    while (next_line(stream, line)) {
        listed_file entry{};
        std::istringstream words(line);
        if (words >> entry.name >> entry.size >> entry.time && is_table_name(entry.name))
            files.push_back(entry);
    }
    return files;
}

void write_manifest(const std::filesystem::path& file, const std::vector<listed_file>& files) {
    output_file manifest(file);
    manifest.write(fmt::format("{}\n", first_line));
    for (const auto& [name, size, time] : files)
        manifest.write(fmt::format("{} {} {}\n", name, size, time));
    manifest.close();
}

} // namespace rtrange
