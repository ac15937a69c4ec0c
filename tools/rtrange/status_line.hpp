// One line on the terminal that is written over and over.
#pragma once

#include <string>

namespace rtrange {

/// Draws on standard error, and only when that is a terminal. Leaves nothing behind.
class status_line {
public:
    status_line();
    ~status_line();
    status_line(const status_line&) = delete;
    status_line& operator=(const status_line&) = delete;

    /// Replaces what the line shows.
    void show(const std::string& text);

private:
    bool visible_;
};

} // namespace rtrange
