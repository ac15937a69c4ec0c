// The plug-in in the project's own host: loading and unloading, and instances on several threads.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "simulation/simulated_traffic.hpp"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using namespace zel;
using simulation::bytes;

bool is_loaded() {
#ifdef _WIN32
    return GetModuleHandleA("zel_rt_range_formatter.dll") != nullptr;
#else
    void* const handle = dlopen(PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
#endif
}

/// Frames of a few seconds with all kinds of packets.
std::vector<bytes> frames_of_a_run(std::uint64_t seed) {
    simulation::traffic_options options;
    options.duration_s = 4;
    options.seed = seed;
    const simulation::scenario scenario(seed, options.targets);
    std::vector<bytes> frames;
    for (std::uint64_t tick = 0; tick < tick_count(options); ++tick)
        send_tick(options, scenario, tick, [&](std::uint64_t, std::span<const std::uint8_t> frame) {
            frames.emplace_back(frame.begin(), frame.end());
        });
    return frames;
}

/// All package data of a run, one after the other.
bytes decode(const host::plugin& plugin, const host::host_services& services,
             const std::vector<bytes>& frames) {
    host::formatter_instance instance(plugin.formatter("zel.rtrange"), services);
    host::raw_package_buffer raw;
    bytes all;
    for (const bytes& frame : frames) {
        host::wrap_recorder_frame(frame, raw);
        for (const zel_package_t* const package : instance.transform(raw.package())) {
            const auto data = host::data(*package);
            all.insert(all.end(), data.begin(), data.end());
        }
    }
    return all;
}

TEST(reference_host, hands_failures_to_the_caller) {
    const host::plugin plugin(PLUGIN_FILE);
    EXPECT_THROW(plugin.formatter("zel.can"), std::runtime_error);
    const host::host_services services(
        [](const zel_log_info_t&) { throw std::runtime_error("disk full"); });
    host::formatter_instance instance(plugin.formatter("zel.rtrange"), services);
    host::raw_package_buffer raw;
    raw.resize(3);
    try {
        instance.transform(raw.package());
        FAIL() << "the log has failed";
    } catch (const host::host_error& error) {
        EXPECT_EQ(error.status(), 0xA0000FA5U);
        EXPECT_STREQ(error.what(), "disk full");
    }
    // A state that this host finds fault with ends in a log record, too.
    host::wrap_recorder_frame(frames_of_a_run(1).front(), raw);
    raw.package().state_value = 1;
    EXPECT_THROW(instance.transform(raw.package()), host::host_error);
    raw.package().state_value = 0;
    const host::package_array packages = instance.transform(raw.package());
    ASSERT_EQ(packages.size(), 2U);
    EXPECT_EQ(host::format_type(packages[0]), "zel.eth");
    EXPECT_EQ(host::format_type(packages[1]), "zel.rtrange");
}

TEST(reference_host, unloads_the_library_with_its_last_user) {
    const host::host_services services([](const zel_log_info_t&) {});
    const auto frames = frames_of_a_run(2);
    bytes first;
    {
        const host::plugin one(PLUGIN_FILE);
        first = decode(one, services, frames);
        {
            // A second host in the same process, with services of its own.
            const host::plugin two(PLUGIN_FILE);
            const host::host_services others([](const zel_log_info_t&) {});
            EXPECT_EQ(decode(two, others, frames), first);
        }
        EXPECT_TRUE(is_loaded());
        EXPECT_EQ(decode(one, services, frames), first);
    }
#if !defined(__SANITIZE_ADDRESS__) // which keeps every library loaded to tell leaks by name
    EXPECT_FALSE(is_loaded());
#endif
    const host::plugin again(PLUGIN_FILE);
    EXPECT_EQ(decode(again, services, frames), first);
}

TEST(reference_host, serves_instances_on_several_threads_with_one_log) {
    const host::plugin plugin(PLUGIN_FILE);
    std::atomic<unsigned> records = 0;
    const host::host_services services([&](const zel_log_info_t&) { ++records; });
    std::vector<std::vector<bytes>> runs;
    std::vector<bytes> expected;
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        runs.push_back(frames_of_a_run(seed));
        expected.push_back(decode(plugin, services, runs.back()));
    }
    const unsigned records_of_one_round = records;
    ASSERT_GT(records_of_one_round, 0U);

    std::vector<bytes> results(runs.size());
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < runs.size(); ++i)
        threads.emplace_back([&, i] { results[i] = decode(plugin, services, runs[i]); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(results, expected);
    EXPECT_EQ(records, 2 * records_of_one_round);
}

} // namespace
