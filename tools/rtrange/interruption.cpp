#include "tools/rtrange/interruption.hpp"

#include <csignal>

namespace rtrange {
namespace {

volatile std::sig_atomic_t signal_received = 0;

void note_signal(int signal) {
    signal_received = 1;
    // A second signal ends the program at once.
    std::signal(signal, SIG_DFL);
}

} // namespace

void catch_interruptions() {
    std::signal(SIGINT, note_signal);
    std::signal(SIGTERM, note_signal);
}

bool interrupted() {
    return signal_received != 0;
}

} // namespace rtrange
