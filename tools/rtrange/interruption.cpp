#include "tools/rtrange/interruption.hpp"

#include <csignal>

namespace rtrange {
namespace {

volatile std::sig_atomic_t signal_came = 0;

void note_signal(int signal) {
    signal_came = 1;
    // Whoever asks twice is not willing to wait.
    std::signal(signal, SIG_DFL);
}

} // namespace

void catch_interruptions() {
    std::signal(SIGINT, note_signal);
    std::signal(SIGTERM, note_signal);
}

bool interrupted() {
    return signal_came != 0;
}

} // namespace rtrange
