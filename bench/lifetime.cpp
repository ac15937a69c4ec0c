// Time and memory of a long-lived instance: one instance decodes a hundred million frames of mixed
// traffic and resets once per round of traffic. Prints the time per frame at each power of ten up
// to FRAMES and fails if the memory in use has changed at the end. usage: lifetime [FRAMES]

#include <malloc.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ratio>
#include <span>
#include <vector>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "simulation/simulated_traffic.hpp"

namespace {

using namespace zel;

/// One round of traffic. Repeating it steps back in time, which resets the decoder.
std::vector<host::raw_package_buffer> make_round() {
    simulation::traffic_options options;
    options.targets = 3;
    options.duration_s = 5;
    const simulation::scenario scenario(options.seed, options.targets);
    std::vector<host::raw_package_buffer> round;
    for (std::uint64_t tick = 0; tick < tick_count(options); ++tick)
        send_tick(options, scenario, tick,
                  [&](std::uint64_t time_ns, std::span<const std::uint8_t> frame) {
                      host::raw_package_buffer& raw = round.emplace_back();
                      host::wrap_recorder_frame(frame, raw);
                      raw.package().reference_timestamp = time_ns;
                  });
    return round;
}

std::size_t bytes_in_use() {
    return mallinfo2().uordblks;
}

} // namespace

int main(int argc, char** argv) {
    constexpr std::uint64_t first_mark = 10'000;
    const std::uint64_t total = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100'000'000;
    if (total < first_mark) {
        std::fprintf(stderr, "usage: lifetime [FRAMES], 10000 or more\n");
        return 2;
    }
    const host::plugin plugin(PLUGIN_FILE);
    const host::host_services services([](const zel_log_info_t&) {});
    const auto round = make_round();
    host::formatter_instance instance(plugin.formatter("zel.rtrange"), services);
    for (const auto& raw : round) // the first round allocates the storage that is reused
        instance.transform(raw.package());

    std::printf("%12s %14s %14s\n", "frames", "ns per frame", "bytes in use");
    const std::size_t bytes_at_start = bytes_in_use();
    std::uint64_t frames = 0;
    auto start = std::chrono::steady_clock::now();
    for (std::uint64_t mark = first_mark; mark <= total; mark *= 10) {
        const std::uint64_t before = frames;
        for (; frames < mark; ++frames)
            instance.transform(round[frames % round.size()].package());
        const std::chrono::duration<double, std::nano> elapsed =
            std::chrono::steady_clock::now() - start;
        std::printf("%12llu %14.1f %14zu\n", static_cast<unsigned long long>(frames),
                    elapsed.count() / static_cast<double>(frames - before), bytes_in_use());
        start = std::chrono::steady_clock::now();
    }
    if (bytes_in_use() != bytes_at_start) {
        std::printf("the memory in use has changed from %zu bytes\n", bytes_at_start);
        return 1;
    }
    return 0;
}
