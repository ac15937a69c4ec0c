#include "tools/rtrange/live_decoding.hpp"

#include <chrono>
#include <cstdint>
#include <cstdio>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/status_line.hpp"

namespace rtrange {
namespace {

/// Nanoseconds since 1970, as frames are stamped with.
std::uint64_t now_ns() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
}

/// Decodes until somebody or something ends it.
void decode_all(live_capture& capture, decoding& run, record_output& output) {
    using clock = std::chrono::steady_clock;
    status_line status;
    auto next_update = clock::now();
    while (!interrupted()) {
        const auto frame = capture.next();
        const std::uint64_t time_ns = frame ? frame->time_ns : now_ns();
        if (run.fates().frames > 0 && run.selection().ends_before(time_ns))
            return;
        if (frame)
            run.decode(*frame, output);
        if (clock::now() < next_update)
            continue;
        next_update += std::chrono::seconds(1);
        status.show(fmt::format("{} frames, {} decoded", run.fates().frames, run.fates().decoded));
    }
}

} // namespace

std::vector<std::string> decode_live(live_capture& capture, decoding& run, record_output& output) {
    const std::string& name = capture.interface_name();
    std::printf("Decoding what comes in on %s; Ctrl-C ends it\n", name.c_str());
    std::fflush(stdout);
    std::vector<std::string> faults;
    try {
        decode_all(capture, run, output);
    } catch (const broken_capture& error) {
        faults.emplace_back(error.what());
    }
    if (run.fates().frames == 0)
        throw failure(faults.empty() ? fmt::format("no frame came in on '{}'", name)
                                     : faults.front());
    if (const std::uint64_t lost = capture.lost(); lost > 0)
        faults.push_back(fmt::format("{} frames on '{}' came in faster than they could be decoded "
                                     "and are lost",
                                     lost, name));
    return faults;
}

} // namespace rtrange
