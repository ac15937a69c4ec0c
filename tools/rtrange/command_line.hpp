// The command line: commands and their options.
#pragma once

#include <string>
#include <vector>

namespace rtrange {

/// Parses the arguments, which do not include the program's name, and runs the command. Returns the
/// exit code. Throws failure and other exceptions of the command.
int run_command_line(const std::vector<std::string>& arguments);

} // namespace rtrange
