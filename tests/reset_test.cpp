// A timestamp before the last one makes a decoder forget everything it has decoded.

#include "simulation/simulated_traffic.hpp"
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// What the frames of a run with two targets decode to; several sample batches, the last one not
/// yet complete.
std::vector<bytes> decode_run(instance& plugin, std::uint64_t seed, std::uint64_t timestamp) {
    zel::simulation::traffic_options options;
    options.seed = seed;
    const zel::simulation::scenario scenario(seed, options.targets);
    std::vector<bytes> decoded;
    for (std::uint64_t tick = 0; tick < 70; ++tick)
        send_tick(options, scenario, tick, [&](std::uint64_t, std::span<const std::uint8_t> frame) {
            for (const package& each :
                 plugin.decode(bytes(frame.begin(), frame.end()), timestamp).packages)
                decoded.push_back(each.data);
        });
    return decoded;
}

TEST(reset, leaves_an_instance_like_a_fresh_one) {
    instance used(ethernet_formatter());
    instance fresh(ethernet_formatter());
    const auto run = decode_run(fresh, 1, 999);
    ASSERT_GT(run.size(), 300U);
    EXPECT_NE(decode_run(used, 2, 1000), run);
    EXPECT_NE(decode_run(used, 1, 1000), run) << "an equal timestamp is no reset";
    EXPECT_EQ(decode_run(used, 1, 999), run);
}

TEST(reset, makes_identified_units_news_again) {
    instance plugin;
    const bytes frame = identification(3, hunter_address, target_address);
    EXPECT_EQ(plugin.decode(frame, 1000).logs.size(), 2U);
    EXPECT_EQ(plugin.decode(frame, 1000).logs.size(), 0U);
    EXPECT_EQ(plugin.decode(frame, 999).logs.size(), 2U);
}

TEST(reset, comes_from_any_datagram_to_a_decoded_port) {
    instance plugin(ethernet_formatter());
    const bytes frame = ncom_frame(ncom_packet{});
    const auto expect_count = [&](std::uint64_t timestamp, std::uint64_t count) {
        EXPECT_EQ(first_package(plugin.decode(frame, timestamp)).u64(unit + 16), count);
    };
    expect_count(15, 1);
    // Foreign traffic has no say in the time, a refused datagram has.
    plugin.decode(datagram({}, 9), 1);
    expect_count(16, 2);
    plugin.decode(datagram({}, 3000), 14);
    expect_count(15, 1);
    plugin.decode(rcom_frame(bytes{}), 13);
    expect_count(14, 1);
}

} // namespace
} // namespace harness
