// Writes the seed inputs of the fuzz targets: pieces of a simulated run.
// usage: make_corpus FOLDER

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "simulation/simulated_traffic.hpp"

namespace {

using namespace zel::simulation;
namespace fs = std::filesystem;

/// A raw package in the form that the targets read, with `prefix` before the frame.
void append_package(bytes& input, const bytes& prefix, std::span<const std::uint8_t> frame) {
    const std::size_t size = prefix.size() + frame.size();
    input.insert(input.end(),
                 {1, static_cast<std::uint8_t>(size), static_cast<std::uint8_t>(size >> 8)});
    input.insert(input.end(), prefix.begin(), prefix.end());
    input.insert(input.end(), frame.begin(), frame.end());
}

void write(const fs::path& file, const bytes& content) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(content.data()),
               static_cast<std::streamsize>(content.size()));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const fs::path folder = argv[1];
    const bytes source_header{1, 2, 3, 4};
    const bytes vehicle_bus_header(16, 0);
    const traffic_options options;
    const scenario scenario(options.seed, options.targets);
    // A few ticks each: from the start, which names the units, and long enough for a sample batch.
    for (const std::uint64_t ticks : {1U, 3U, 12U}) {
        bytes recorder;
        bytes ethernet;
        bytes failures{0};
        for (std::uint64_t tick = 0; tick < ticks; ++tick)
            send_tick(
                options, scenario, tick, [&](std::uint64_t, std::span<const std::uint8_t> frame) {
                    append_package(recorder, source_header, frame);
                    append_package(ethernet, vehicle_bus_header, frame);
                    failures.insert(failures.end(), {0, static_cast<std::uint8_t>(tick % 2 * 2)});
                    append_package(failures, source_header, frame);
                });
        const std::string name = "run_" + std::to_string(ticks);
        write(folder / "fuzz_recorder_frames" / name, recorder);
        write(folder / "fuzz_ethernet_frames" / name, ethernet);
        write(folder / "fuzz_host_failures" / name, failures);
    }
}
