// rtrange decode: writes tables of decoded records.
#pragma once

#include <filesystem>
#include <string>

#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// Arguments of the command.
struct decode_options {
    run_options run;
    std::string interface_name;   ///< interface to decode live; empty to decode captures
    std::string kind = "csv";     ///< output format: "csv", "hdf5" or "mat"
    std::filesystem::path output; ///< folder of CSV tables, or file; empty for the default
    bool overwrite = false;       ///< replace an earlier result
};

/// Decodes captures, or the traffic of a network interface, and prints a summary. Returns the exit
/// code. Throws failure when nothing could be decoded.
int decode(const decode_options& options);

} // namespace rtrange
