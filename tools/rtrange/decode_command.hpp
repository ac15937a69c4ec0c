// rtrange decode: a capture goes in, tables of decoded records come out.
#pragma once

#include <filesystem>
#include <string>

#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// Arguments of the command.
struct decode_options {
    run_options run;
    std::string interface_name;   ///< to decode live from, instead of captures; empty for captures
    std::string kind = "csv";     ///< of output: "csv" or "hdf5"
    std::filesystem::path output; ///< folder of CSV tables, or HDF5 file; empty for the usual name
};

/// Decodes captures, or what comes in on a network interface, and prints a summary. Gives the exit
/// code; throws failure when nothing could be decoded.
int decode(const decode_options& options);

} // namespace rtrange
