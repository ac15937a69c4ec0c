#include "tools/rtrange/platform.hpp"

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace rtrange {

void set_up_process() {
    // Tables are completed even when the reader of standard output has exited.
    std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> program_arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

std::filesystem::path program_file() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::FILE* open_for_writing(const std::filesystem::path& file) {
    return std::fopen(file.c_str(), "wb");
}

std::int64_t position_in(std::FILE* file) {
    return ftello(file);
}

bool standard_error_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

} // namespace rtrange
