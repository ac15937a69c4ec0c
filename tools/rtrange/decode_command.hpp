// rtrange decode: a capture goes in, tables of decoded records come out.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace rtrange {

/// Arguments of the command.
struct decode_options {
    std::vector<std::filesystem::path> captures;
    std::filesystem::path output = "decoded";
    std::string format = "zel.rtrange"; ///< the raw packages to wrap the frames in
    std::filesystem::path plugin;
};

/// Decodes the captures one after the other, as one run, and prints a summary. Gives the exit code;
/// throws failure when nothing could be decoded.
int decode(const decode_options& options);

} // namespace rtrange
