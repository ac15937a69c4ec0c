// A progress bar on the terminal.
#pragma once

#include <cstdint>
#include <string>

#include "tools/rtrange/status_line.hpp"

namespace rtrange {

/// Shows how much of some work is done.
class progress_bar {
public:
    /// `total` is the amount of work, in any unit; 0 shows a full bar.
    progress_bar(std::string label, std::uint64_t total);

    /// Redraws the bar when the percentage has changed.
    void update(std::uint64_t done);

private:
    std::string label_;
    std::uint64_t total_;
    std::uint64_t shown_percent_ = 101;
    status_line line_;
};

} // namespace rtrange
