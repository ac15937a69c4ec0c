#include "tools/rtrange/status_line.hpp"

#include <cstdio>
#include <system_error>

#include <fmt/format.h>

#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace rtrange {

namespace {

void draw(const std::string& text) {
    try {
        fmt::print(stderr, "\r\x1b[K{}", text);
        std::fflush(stderr);
    } catch (const std::system_error&) {
        // The terminal is gone; the work goes on without it.
    }
}

} // namespace

status_line::status_line() : visible_(!is_silent() && standard_error_is_terminal()) {}

status_line::~status_line() {
    if (visible_)
        draw({});
}

void status_line::show(const std::string& text) {
    if (visible_)
        draw(text);
}

} // namespace rtrange
