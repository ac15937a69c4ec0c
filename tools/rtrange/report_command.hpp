// rtrange report: plots captures on an HTML page.
#pragma once

#include <filesystem>

#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// Arguments of the command.
struct report_command_options {
    run_options run;
    std::filesystem::path output; ///< HTML file; empty for the default
    bool overwrite = false;       ///< replace an earlier report
};

/// Decodes captures, writes the page and prints a summary. Returns the exit code. Throws failure
/// when nothing could be decoded.
int report(const report_command_options& options);

} // namespace rtrange
