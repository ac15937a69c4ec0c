#include "tools/rtrange/status_line.hpp"

#include <cstdio>

#include <fmt/format.h>

#include "tools/rtrange/platform.hpp"

namespace rtrange {

status_line::status_line() : visible_(standard_error_is_terminal()) {}

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
