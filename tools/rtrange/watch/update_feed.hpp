// The events that browsers are sent.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tools/rtrange/watch/live_history.hpp"
#include "tools/rtrange/watch/replay_clock.hpp"

namespace rtrange {

/// What is watched.
struct watched_run {
    std::string title; ///< the captures, or the network interface
    bool live;         ///< whether the frames come from an interface
    double speed;      ///< of captures
};

/// One event, which all browsers that have been sent the same rows before can share.
struct update {
    std::uint64_t after; ///< number of the last row that was sent before
    std::uint64_t last;  ///< number of the last row that has been sent with it
    std::string text;    ///< empty if there is nothing new
};

/// Makes events of the history. Any thread may call it. A browser is sent the rows that were added
/// since its last update and are still in the history.
class update_feed {
public:
    /// The time between two updates.
    static constexpr std::chrono::milliseconds interval{40};

    /// The history must outlive the feed.
    update_feed(const live_history& history, watched_run run);

    /// The clock of captures.
    replay_clock& clock() { return clock_; }

    /// The first event. Browsers that connect again see by it that the run is the same.
    const std::string& start() const { return start_; }

    /// The update of the current interval for a browser that has all rows up to `after`.
    std::shared_ptr<const update> next(std::uint64_t after);

private:
    std::shared_ptr<const update> make(std::uint64_t after) const;
    double now_s(const run_status& status) const;

    const live_history& history_;
    watched_run run_;
    replay_clock clock_;
    std::string start_;

    std::mutex mutex_; ///< of all that follows
    std::chrono::steady_clock::time_point next_interval_;
    std::uint64_t last_ = 0;                          ///< newest row in this interval
    std::vector<std::shared_ptr<const update>> made_; ///< in this interval
};

} // namespace rtrange
