// rtrange decode: writes tables of decoded records.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "tools/rtrange/outputs/table_output.hpp"
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

/// The folder or file to write. Throws usage_failure when its name is that of another kind.
std::filesystem::path output_of(const decode_options& options);

/// Throws usage_failure when the result would replace a capture, or has the name of the summary.
void check_names(const std::filesystem::path& output, const decode_options& options);

/// Creates the tables. The columns must outlive them. Throws failure when they cannot be written or
/// may not be replaced.
std::unique_ptr<table_output> create_output(const std::filesystem::path& output,
                                            const decode_options& options,
                                            const table_columns& columns);

/// Decodes captures, or the traffic of a network interface, and prints a summary. Returns the exit
/// code. Throws failure when nothing could be decoded.
int decode(const decode_options& options);

} // namespace rtrange
