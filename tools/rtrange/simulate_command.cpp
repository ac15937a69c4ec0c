#include "tools/rtrange/simulate_command.hpp"

#include <cstdint>
#include <span>

#include <fmt/format.h>

#include "tools/rtrange/captures/capture_writer.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/progress_bar.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace rtrange {

void simulate(const simulate_options& options) {
    const zel::simulation::traffic_options& traffic = options.traffic;
    print("Simulating {} s, scenario {}: a hunter and {} target{} at {} Hz, seed {}\n",
          traffic.duration_s,
          zel::simulation::scenario_names.at(static_cast<std::size_t>(traffic.scenario)),
          traffic.targets, traffic.targets == 1 ? "" : "s", traffic.rate_hz, traffic.seed);
    std::fflush(stdout);

    capture_writer capture(options.output);
    catch_interruptions();
    const zel::simulation::scenario vehicles(traffic.seed, traffic.targets, traffic.scenario);
    const std::uint64_t ticks = tick_count(traffic);
    std::uint64_t frames = 0;
    {
        progress_bar progress("Simulating", ticks);
        for (std::uint64_t tick = 0; tick < ticks && !interrupted(); ++tick) {
            send_tick(traffic, vehicles, tick,
                      [&](std::uint64_t time_ns, std::span<const std::uint8_t> frame) {
                          capture.write(time_ns, frame);
                          ++frames;
                      });
            progress.update(tick);
        }
    }
    capture.close();
    if (interrupted())
        throw failure(fmt::format("interrupted; '{}' holds the first {} frames",
                                  options.output.string(), frames));
    print("{} frames in {}\n", frames, options.output.string());
}

} // namespace rtrange
