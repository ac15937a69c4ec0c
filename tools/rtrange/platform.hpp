// What each operating system does in a way of its own. File names are UTF-8 wherever they are text.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace rtrange {

/// Prepares the process; called before anything else. Throws failure when that is not possible.
void set_up_process();

/// The arguments of the program, without its name.
std::vector<std::string> program_arguments(int argc, char** argv);

/// The file of this program.
std::filesystem::path program_file();

/// A new or emptied binary file; null with errno set when that is not possible.
std::FILE* open_for_writing(const std::filesystem::path& file);

/// Bytes from the file's beginning; -1 when it has no positions.
std::int64_t position_in(std::FILE* file);

/// Whether a person reads standard error, on a terminal that obeys escape sequences.
bool standard_error_is_terminal();

} // namespace rtrange
