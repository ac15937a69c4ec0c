// Sample batches: thirty packets in, thirty filtered samples out.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

constexpr std::size_t slots = unit + 813; ///< the first of seven sample slots
constexpr std::size_t batch_size = 30;
using samples = std::array<double, batch_size>;

/// The n-th packet of a run. With heading 0 the vehicle's axes are north and east.
ncom_packet packet_of_run(std::size_t n) {
    const auto i = static_cast<std::int32_t>(n);
    ncom_packet packet = status_packet(1, {});
    packet.acceleration = {1000 * i * i - 20000, 3000 * i, 98100};
    packet.rate = {11, 22, 5000 - 300 * i};
    packet.velocity = {200000 + 900 * i, 40000 - 700 * i * (i % 3), 123};
    return packet;
}

std::array<double, 7> sample_values(const ncom_packet& packet) {
    const double along = packet.velocity[0] / 10000.0;
    const double across = -(packet.velocity[1] / 10000.0);
    return {packet.acceleration[0] / 10000.0,
            -(packet.acceleration[1] / 10000.0),
            along,
            along * 3.6,
            across,
            across * 3.6,
            degrees(packet.rate[2] / 100000.0)};
}

/// Direct form, from rest. The sums are separate and ascending, so that every bit is settled.
samples low_pass(const samples& x) {
    constexpr std::array b{7e-11,     8.9e-10,   4.9e-09,   1.635e-08, 3.678e-08,
                           5.885e-08, 6.866e-08, 5.885e-08, 3.678e-08, 1.635e-08,
                           4.9e-09,   8.9e-10,   7e-11};
    constexpr std::array a{1.0,       -9.5936, 42.3846, -113.9982, 207.8427, -270.5559, 257.7919,
                           -181.1231, 93.1152, -34.155, 8.4836,    -1.281,   0.0889};
    samples y{b[0] * x[0]}; // which keeps the sign of a zero
    for (std::size_t n = 1; n < batch_size; ++n) {
        double forward = 0.0;
        double backward = 0.0;
        for (std::size_t k = 0; k <= std::min<std::size_t>(n, 12); ++k)
            forward += b[k] * x[n - k];
        for (std::size_t k = 1; k <= std::min<std::size_t>(n, 12); ++k)
            backward += a[k] * y[n - k];
        y[n] = forward - backward;
    }
    return y;
}

/// The filtered samples of the batch that begins with this packet of the run, by key.
std::array<samples, 7> filtered_batch(std::size_t first) {
    std::array<samples, 7> batch{};
    for (std::size_t n = 0; n < batch_size; ++n)
        for (std::size_t key = 0; key < 7; ++key)
            batch[key][n] = sample_values(packet_of_run(first + n))[key];
    for (samples& values : batch)
        values = low_pass(values);
    return batch;
}

void expect_slots(const package& record, const std::array<samples, 7>& batch, std::size_t n) {
    for (std::size_t key = 0; key < 7; ++key)
        expect_doubles(record, slots + 8 * key, {batch[key][n]});
}

TEST(sample_batch, comes_before_the_package_of_every_thirtieth_packet) {
    instance plugin;
    std::array<samples, 7> last{}; // the slots are empty until the first batch
    for (std::size_t n = 0; n < 65; ++n) {
        SCOPED_TRACE(n);
        const bytes frame = ncom_frame(packet_of_run(n));
        EXPECT_TRUE(plugin.decode(cut(frame, frame.size() - 1)).decoded().empty()); // not counted
        const std::vector<package> decoded = plugin.decode(frame).decoded();
        const bool full = n % batch_size == batch_size - 1;
        ASSERT_EQ(decoded.size(), full ? 31U : 1U);
        if (full) {
            last = filtered_batch(n + 1 - batch_size);
            for (std::size_t i = 0; i < batch_size; ++i)
                expect_slots(decoded[i], last, i);
        }
        expect_slots(decoded.back(), last, batch_size - 1);
    }
}

TEST(sample_batch, differs_from_the_package_behind_it_in_the_slots_alone) {
    instance plugin;
    for (std::size_t n = 0; n < 29; ++n)
        plugin.decode(ncom_frame(packet_of_run(n)), 1000 + n);
    raw_package raw = recorder_package(ncom_frame(packet_of_run(29)), 2000);
    raw.source_info = 0x0345; // bits 8 to 11 are 3
    raw.pass_through_block.fill(0x77);
    const std::vector<package> decoded = plugin.transform(raw).decoded();
    ASSERT_EQ(decoded.size(), 31U);
    for (const package& each : decoded) {
        expect_header(each, raw, 3);
        ASSERT_EQ(each.data.size(), 873U);
        EXPECT_TRUE(
            std::equal(each.data.begin(), each.data.begin() + slots, decoded.back().data.begin()));
    }
}

} // namespace
} // namespace harness
