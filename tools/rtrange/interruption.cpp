#include "tools/rtrange/interruption.hpp"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <ctime>

namespace rtrange {
namespace {

/// A Ctrl-C pressed twice by mistake, and the signals that job runners send one after the other,
/// come within this time and must not cost the result.
constexpr std::int64_t seconds_without_effect = 2;

std::atomic<std::int64_t> first_signal_s = 0; ///< since 1970; 0: none
static_assert(decltype(first_signal_s)::is_always_lock_free, "signal handlers must not wait");

void note_signal(int signal) {
    std::signal(signal, note_signal); // some systems reset it
    const std::int64_t now = std::time(nullptr);
    std::int64_t first = 0;
    if (first_signal_s.compare_exchange_strong(first, now) || now - first <= seconds_without_effect)
        return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

void catch_interruptions() {
    std::signal(SIGINT, note_signal);
    std::signal(SIGTERM, note_signal);
#ifdef SIGHUP
    // nohup has it ignored.
    if (std::signal(SIGHUP, note_signal) == SIG_IGN)
        std::signal(SIGHUP, SIG_IGN);
#endif
}

bool interrupted() {
    return first_signal_s != 0;
}

} // namespace rtrange
