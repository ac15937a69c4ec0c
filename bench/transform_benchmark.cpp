// Cost of `transform` per frame, compared with a lower bound (floor): the same packages created
// through the same host functions, filled by memcpy and destroyed. Both are measured alternately
// within one benchmark, so that other load on the machine affects both alike.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "simulation/ethernet_frame.hpp"
#include "simulation/ncom_packet.hpp"
#include "simulation/rcom_packets.hpp"

namespace {

using namespace zel;
using simulation::bytes;

constexpr simulation::ip_address sender{195, 0, 0, 10};
constexpr simulation::ip_address target{195, 0, 0, 21};
constexpr simulation::ip_address broadcast{195, 0, 0, 255};

bytes datagram(std::uint16_t port, const bytes& payload) {
    return simulation::udp_frame({sender, 3000}, {broadcast, port}, payload);
}

/// NCOM packets with various status channels. The heading moves back and forth by more than a
/// degree per packet: the filter of the heading drops smaller steps early.
std::vector<bytes> ncom_packets() {
    constexpr std::int32_t heading_step = 20'000; // microradians
    std::vector<bytes> packets;
    for (const std::uint8_t channel : bytes{0, 2, 3, 4, 5, 12, 13, 16, 20, 1}) {
        simulation::ncom_packet packet;
        packet.time_in_minute_ms = static_cast<std::uint16_t>(packets.size() * 10);
        packet.acceleration = {1200, -300, -98100};
        packet.rate = {12, -4, 900};
        packet.latitude = 0.9;
        packet.longitude = 0.2;
        packet.velocity = {251000, 12000, -30};
        const auto number = static_cast<std::int32_t>(packets.size());
        packet.heading = 785398 + std::min(number, 9 - number) * heading_step;
        packet.pitch = 1000;
        packet.roll = -2000;
        packet.status_channel = channel;
        packet.status_data = {10, 0, 20, 0, 30, 0, 2, 1};
        packets.push_back(simulation::encode(packet));
    }
    return packets;
}

std::vector<bytes> ncom_frames() {
    std::vector<bytes> frames;
    for (const bytes& packet : ncom_packets())
        frames.push_back(datagram(3000, packet));
    return frames;
}

simulation::extended_range_packet range_packet(std::uint8_t channel) {
    simulation::extended_range_packet packet;
    packet.target_number = 1;
    packet.range_lateral = 250;
    packet.range_longitudinal = 31000;
    packet.range_rate_lateral = 20;
    packet.range_rate_longitudinal = -150;
    packet.acceleration_lateral = 5;
    packet.acceleration_longitudinal = -40;
    packet.status_channel = channel;
    packet.status_data = {195, 0, 0, 10, 195, 0, 0, 21};
    return packet;
}

/// Identifies the target's address, without which wrapped NCOM is dropped.
bytes identification() {
    return datagram(3003, simulation::encode(range_packet(9)));
}

std::vector<bytes> range_frames() {
    std::vector<bytes> frames;
    for (std::uint8_t channel = 0; channel < 22; ++channel)
        frames.push_back(datagram(3003, simulation::encode(range_packet(channel))));
    return frames;
}

std::vector<bytes> lane_frames() {
    std::vector<bytes> frames;
    for (const std::uint8_t channel : bytes{0, 1, 2, 6, 7, 8, 9, 10, 15}) {
        simulation::lane_packet packet;
        packet.values_12.fill(-1750);
        packet.values_58.fill(120);
        packet.status_channel = channel;
        frames.push_back(datagram(3003, simulation::encode(packet)));
    }
    return frames;
}

std::vector<bytes> wrapped_frames() {
    std::vector<bytes> frames;
    for (const bytes& packet : ncom_packets())
        frames.push_back(datagram(3003, simulation::encode_wrapped_ncom(target, packet)));
    return frames;
}

/// One package of the floor: its format type and its data.
struct floor_package {
    const char* format_type;
    bytes data;
};

/// Creates, fills and destroys the packages of one call of `transform`.
void replay(const std::vector<floor_package>& packages) {
    const zel_allocator_t& allocator = host::package_array::allocator();
    auto** const array = static_cast<zel_package_t**>(
        allocator.allocate_array(packages.size(), sizeof(zel_package_t*), allocator.context));
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const floor_package& package = packages[i];
        zel_package_create(&allocator, package.data.size(), &array[i], nullptr);
        zel_package_assign_format_type(array[i], package.format_type, nullptr);
        std::memcpy(array[i] + 1, package.data.data(), package.data.size());
    }
    const host::package_array owner(array, packages.size());
    benchmark::DoNotOptimize(owner.begin());
}

using clock = std::chrono::steady_clock;

double seconds_since(clock::time_point start) {
    return std::chrono::duration<double>(clock::now() - start).count();
}

void transform_frames(benchmark::State& state, const std::vector<bytes>& frames,
                      std::string_view format) {
    const host::plugin plugin(PLUGIN_FILE);
    const host::host_services services([](const zel_log_info_t&) {});
    host::formatter_instance instance(plugin.formatter(format), services);

    const auto wrap = format == host::recorder_frame_type ? &host::wrap_recorder_frame
                                                          : &host::wrap_ethernet_frame;
    host::raw_package_buffer first;
    wrap(identification(), first);
    instance.transform(first.package());
    std::vector<host::raw_package_buffer> raw_packages(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        wrap(frames[i], raw_packages[i]);

    // 30 rounds complete a whole number of sample batches, whatever the number of frames.
    constexpr std::size_t rounds = 30;
    std::vector<std::vector<floor_package>> floor;
    for (std::size_t round = 0; round < rounds; ++round)
        for (const auto& raw : raw_packages) {
            auto& packages = floor.emplace_back();
            for (const zel_package_t* const package : instance.transform(raw.package())) {
                const auto data = host::data(*package);
                packages.push_back(
                    {host::format_type(*package) == "zel.eth" ? "zel.eth" : "zel.rtrange",
                     bytes(data.begin(), data.end())});
            }
        }

    double transform_time = 0;
    double floor_time = 0;
    for (auto _ : state) {
        const auto start = clock::now();
        for (std::size_t round = 0; round < rounds; ++round)
            for (const auto& raw : raw_packages)
                benchmark::DoNotOptimize(instance.transform(raw.package()).size());
        const double transformed = seconds_since(start);
        const auto floor_start = clock::now();
        for (const auto& packages : floor)
            replay(packages);
        floor_time += seconds_since(floor_start);
        transform_time += transformed;
        state.SetIterationTime(transformed);
    }
    const double frame_count =
        static_cast<double>(state.iterations()) * static_cast<double>(rounds * frames.size());
    state.counters["ns_per_frame"] = transform_time / frame_count * 1e9;
    state.counters["floor_ns"] = floor_time / frame_count * 1e9;
    state.counters["ratio"] = transform_time / floor_time;
}

bytes not_udp_frame() {
    bytes frame = datagram(3000, bytes(72));
    frame[23] = 6;
    return frame;
}

} // namespace

int main(int argc, char** argv) {
    const auto add = [](const char* name, std::vector<bytes> frames, std::string_view format) {
        benchmark::RegisterBenchmark(name, [frames, format](benchmark::State& state) {
            transform_frames(state, frames, format);
        })->UseManualTime();
    };
    const auto eth = host::ethernet_frame_type;
    add("ncom/zel.eth.rtrange", ncom_frames(), eth);
    add("ncom/zel.rtrange", ncom_frames(), host::recorder_frame_type);
    add("ext_range/zel.eth.rtrange", range_frames(), eth);
    add("lane/zel.eth.rtrange", lane_frames(), eth);
    add("wrapped_ncom/zel.eth.rtrange", wrapped_frames(), eth);
    add("foreign_port/zel.eth.rtrange", {datagram(5353, bytes(72))}, eth);
    add("foreign_not_udp/zel.eth.rtrange", {not_udp_frame()}, eth);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
}
