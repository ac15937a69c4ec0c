// Progress of long work, shown on a terminal.
#pragma once

#include <cstdint>
#include <string>

#include "tools/rtrange/status_line.hpp"

namespace rtrange {

/// A bar that fills up.
class progress_bar {
public:
    /// `total` is the amount of work, in any unit.
    progress_bar(std::string label, std::uint64_t total);

    /// Redraws when a new percent has been reached.
    void update(std::uint64_t done);

private:
    std::string label_;
    std::uint64_t total_;
    std::uint64_t shown_percent_ = 101;
    status_line line_;
};

} // namespace rtrange
