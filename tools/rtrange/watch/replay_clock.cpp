#include "tools/rtrange/watch/replay_clock.hpp"

#include <algorithm>
#include <thread>

#include "tools/rtrange/interruption.hpp"

namespace rtrange {

void replay_clock::wait_for(const captured_frame& frame) {
    constexpr std::chrono::milliseconds longest_sleep(50);
    clock::time_point until;
    {
        const std::scoped_lock lock(mutex_);
        if (speed_ == 0.0 || frame.number == 1 || frame.time_ns < last_ns_) {
            start_ = clock::now();
            start_ns_ = last_ns_ = frame.time_ns;
        }
        next_ns_ = frame.time_ns;
        until = due(frame.time_ns);
    }
    while (!interrupted()) {
        const auto now = clock::now();
        if (now >= until)
            break;
        std::this_thread::sleep_for(std::min<clock::duration>(until - now, longest_sleep));
    }
    const std::scoped_lock lock(mutex_);
    last_ns_ = frame.time_ns;
}

std::uint64_t replay_clock::now_ns() const {
    const std::scoped_lock lock(mutex_);
    const std::chrono::duration<double, std::nano> passed = clock::now() - start_;
    // Compared as a number first: at a high speed, the product may exceed any time.
    const double ahead =
        std::min(passed.count() * speed_, static_cast<double>(next_ns_ - start_ns_));
    return std::max(last_ns_, start_ns_ + static_cast<std::uint64_t>(ahead));
}

replay_clock::clock::time_point replay_clock::due(std::uint64_t time_ns) const {
    if (speed_ == 0.0)
        return start_;
    constexpr double a_year_ns = 366 * 86400e9;
    const double wait_ns = std::min(static_cast<double>(time_ns - start_ns_) / speed_, a_year_ns);
    return start_ + std::chrono::nanoseconds(static_cast<std::int64_t>(wait_ns));
}

} // namespace rtrange
