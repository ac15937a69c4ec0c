#include "tools/rtrange/live_decoding.hpp"

#include <chrono>
#include <cstdint>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/status_line.hpp"

namespace rtrange {
namespace {

/// Nanoseconds since 1970, like the timestamps of frames.
std::uint64_t now_ns() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
}

/// Decodes until an interruption or the upper time limit.
void decode_all(live_capture& capture, frame_decoder& decoder, table_output& output,
                run_follower* follower) {
    using clock = std::chrono::steady_clock;
    status_line status;
    auto next_update = clock::now();
    const std::uint64_t start_ns = now_ns();
    while (!interrupted()) {
        const auto frame = capture.next();
        const std::uint64_t time_ns = frame ? frame->time_ns : now_ns();
        // Until the first frame, which becomes the start, the time limit counts from now on.
        const bool ends = decoder.outcomes().frames > 0
                              ? decoder.selected().ends_before(time_ns)
                              : decoder.selected().ends_before(time_ns, start_ns);
        if (ends)
            return;
        if (frame)
            decoder.decode(*frame, output);
        if (frame && follower != nullptr)
            follower->finish(*frame);
        if (clock::now() < next_update)
            continue;
        next_update += std::chrono::seconds(1);
        status.show(fmt::format("{} frames, {} decoded", decoder.outcomes().frames,
                                decoder.outcomes().decoded));
    }
}

} // namespace

std::vector<std::string> decode_live(live_capture& capture, frame_decoder& decoder,
                                     table_output& output, run_follower* follower) {
    const std::string& name = capture.interface_name();
    print_progress("Decoding frames from {} until Ctrl-C\n", name);
    std::vector<std::string> faults;
    try {
        decode_all(capture, decoder, output, follower);
    } catch (const broken_capture& error) {
        if (decoder.outcomes().frames == 0)
            throw;
        faults.push_back(fmt::format("{}; the frames before that are decoded", error.what()));
    }
    if (decoder.outcomes().frames == 0)
        throw failure(fmt::format("no frame was received on '{}'", name));
    if (const std::uint64_t lost = capture.lost(); lost > 0)
        faults.push_back(fmt::format("{} frames on '{}' were lost: they came in faster than they "
                                     "could be decoded",
                                     lost, name));
    return faults;
}

} // namespace rtrange
