#include "tools/rtrange/standard_output.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "tools/rtrange/failure.hpp"

namespace rtrange {
namespace {

bool silent = false;

} // namespace

void silence_standard_output() {
    silent = true;
}

bool is_silent() {
    return silent;
}

void print_formatted(fmt::string_view format, fmt::format_args arguments) {
    if (silent)
        return;
    try {
        fmt::vprint(stdout, format, arguments);
    } catch (const std::system_error& error) {
        throw failure(fmt::format("cannot write to standard output: {}", error.code().message()));
    }
}

void print_formatted_progress(fmt::string_view format, fmt::format_args arguments) {
    try {
        print_formatted(format, arguments);
    } catch (const failure&) {
        // Remembered by the stream.
    }
    std::fflush(stdout);
}

void flush_standard_output() {
    if (std::fflush(stdout) != 0)
        throw failure(fmt::format("cannot write to standard output: {}", std::strerror(errno)));
    if (std::ferror(stdout) != 0) // of an earlier call, whose reason is no longer known
        throw failure("cannot write to standard output");
}

} // namespace rtrange
