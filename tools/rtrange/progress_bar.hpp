// Progress of long work, shown on a terminal.
#pragma once

#include <cstdint>
#include <string>

namespace rtrange {

/// Draws on standard error, and only when that is a terminal.
class progress_bar {
public:
    /// `total` is the amount of work, in any unit.
    progress_bar(std::string label, std::uint64_t total);
    ~progress_bar();
    progress_bar(const progress_bar&) = delete;
    progress_bar& operator=(const progress_bar&) = delete;

    /// Redraws when a new percent has been reached.
    void update(std::uint64_t done);

private:
    std::string label_;
    std::uint64_t total_;
    std::uint64_t shown_percent_ = 101;
    bool visible_;
};

} // namespace rtrange
