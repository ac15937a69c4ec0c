#include "tools/rtrange/captures/compressed_capture.hpp"

#include <array>
#include <fstream>
#include <ios>
#include <string_view>

#include <fmt/format.h>

namespace rtrange {
namespace {

struct compression {
    std::string_view first_bytes;
    const char* program;
    const char* unpacks; ///< to standard output
};

constexpr std::array<compression, 4> compressions{{
    {"\x1F\x8B", "gzip", "zcat"},
    {{"\xFD\x37zXZ\0", 6}, "xz", "xzcat"},
    {"BZh", "bzip2", "bzcat"},
    {"\x28\xB5\x2F\xFD", "zstd", "zstdcat"},
}};

std::string without_extensions(const std::filesystem::path& file) {
    std::filesystem::path name = file.stem();
    for (const char* const of_captures : {".pcap", ".pcapng", ".cap"})
        if (name.extension() == of_captures)
            name = name.stem();
    return name == file.filename() ? "" : name.string();
}

} // namespace

std::string shell_argument(const std::string& name) {
    constexpr std::string_view harmless = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                          "0123456789_./+:,@%=-";
    std::string text = name.starts_with('-') ? "./" + name : name;
    if (text.find_first_not_of(harmless) == std::string::npos)
        return text;
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 4)
        text.replace(at, 1, "'\\''");
    return "'" + text + "'";
}

void check_not_compressed(const std::filesystem::path& file) {
    std::array<char, 6> bytes{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), static_cast<std::size_t>(stream.gcount()));
    for (const auto& [first_bytes, program, unpacks] : compressions)
        if (start.starts_with(first_bytes))
            throw compressed_capture(
                fmt::format("'{}' is compressed with {}", file.string(), program),
                fmt::format("{} {}", unpacks, shell_argument(file.string())),
                without_extensions(file));
}

} // namespace rtrange
