#include "tools/rtrange/status_line.hpp"

#include <cstdio>

#include <fmt/format.h>
#include <unistd.h>

namespace rtrange {

status_line::status_line() : visible_(isatty(STDERR_FILENO) != 0) {}

status_line::~status_line() {
    if (visible_)
        fmt::print(stderr, "\r\x1b[K");
}

void status_line::show(const std::string& text) {
    if (!visible_)
        return;
    fmt::print(stderr, "\r\x1b[K{}", text);
    std::fflush(stderr);
}

} // namespace rtrange
