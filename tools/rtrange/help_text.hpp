// The help of the program, which is also the text of its man pages.
#pragma once

namespace CLI {
class App;
}

namespace rtrange {

/// Sets how options are listed, for the program and the commands that are added later.
void format_help(CLI::App& app);

/// Adds examples and exit codes to the help of the program and of its commands.
void add_help_footers(CLI::App& app);

} // namespace rtrange
