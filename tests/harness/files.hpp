// Files and folders, as tests look at them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace rtrange_test {

namespace fs = std::filesystem;

inline std::string content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::stringstream all;
    all << stream.rdbuf();
    return all.str();
}

inline void write(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

/// The parts between the separators. A separator at the end ends the last part.
inline std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(separator, begin)) != std::string::npos;
         begin = end + 1)
        parts.push_back(text.substr(begin, end - begin));
    if (begin < text.size())
        parts.push_back(text.substr(begin));
    return parts;
}

inline std::set<std::string> names_in(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

} // namespace rtrange_test
