// rtrange report: a capture goes in, a page to look at comes out.
#pragma once

#include <filesystem>

#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// Arguments of the command.
struct report_command_options {
    run_options run;
    std::filesystem::path output = "report.html";
};

/// Decodes captures into a page and prints a summary. Gives the exit code; throws failure when
/// nothing could be decoded.
int report(const report_command_options& options);

} // namespace rtrange
