// A line of the terminal that is updated in place.
#pragma once

#include <string>

namespace rtrange {

/// Writes to standard error, and only when that is a terminal. The destructor erases the line.
class status_line {
public:
    status_line();
    ~status_line();
    status_line(const status_line&) = delete;
    status_line& operator=(const status_line&) = delete;

    /// Replaces the text of the line.
    void show(const std::string& text);

private:
    bool visible_;
};

} // namespace rtrange
