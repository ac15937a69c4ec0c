// Absolute time: minutes from channel 0 and the roll-over, validity from channel 16.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// Minutes and milliseconds since the GPS epoch, 1980-01-06 00:00:00, less a second; in
/// microseconds since 1970.
std::uint64_t utc(std::int64_t minutes, std::int64_t milliseconds) {
    return static_cast<std::uint64_t>((315964799000 + milliseconds + minutes * 60000) * 1000);
}

/// A packet with an unknown channel.
ncom_packet at_time(std::uint16_t milliseconds) {
    ncom_packet packet = status_packet(1, {});
    packet.time_in_minute_ms = milliseconds;
    return packet;
}
ncom_packet with_minutes(std::uint16_t milliseconds, std::int32_t minutes) {
    ncom_packet packet = status_packet(0, two(minutes, 0));
    packet.time_in_minute_ms = milliseconds;
    return packet;
}
ncom_packet with_validity(std::uint16_t milliseconds, bool valid) {
    ncom_packet packet = status_packet(16, {});
    packet.status_data[7] = valid ? 0x25 : 0x24;
    packet.time_in_minute_ms = milliseconds;
    return packet;
}

struct step {
    ncom_packet packet;
    std::int32_t minutes;
    std::uint8_t valid;
    std::uint64_t time;
};

void expect_step(const package& record, const step& expected) {
    EXPECT_EQ(record.u32(unit + 436), expected.packet.time_in_minute_ms);
    EXPECT_EQ(record.s32(unit + 432), expected.minutes);
    EXPECT_EQ(record.u8(unit + 442), expected.valid);
    EXPECT_EQ(record.u64(unit + 443), expected.time);
}

void expect_steps(const std::vector<step>& steps) {
    instance plugin;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE(i);
        expect_step(first_package(plugin.decode(ncom_frame(steps[i].packet))), steps[i]);
    }
}

TEST(absolute_time, advances_the_minutes_when_the_time_within_falls) {
    expect_steps({{at_time(100), 0, 0, 0},
                  {at_time(59999), 0, 0, 0},
                  {at_time(5), 1, 0, 0},
                  {at_time(5), 1, 0, 0},
                  {at_time(4), 2, 0, 0},
                  {at_time(65535), 2, 0, 0},
                  {at_time(0), 3, 0, 0}});
}

TEST(absolute_time, is_written_only_while_valid) {
    expect_steps({{with_minutes(700, 1000), 1000, 0, 0},
                  {with_validity(710, true), 1000, 1, utc(1000, 710)},
                  {at_time(720), 1000, 1, utc(1000, 720)},
                  {at_time(3), 1001, 1, utc(1001, 3)},
                  {with_validity(13, false), 1001, 0, utc(1001, 3)},
                  {at_time(23), 1001, 0, utc(1001, 3)},
                  {at_time(2), 1002, 0, utc(1001, 3)},
                  {with_validity(9, true), 1002, 1, utc(1002, 9)},
                  // The packet's own minutes count at once and hide its roll-over.
                  {with_minutes(8, 2000), 2000, 1, utc(2000, 8)}});
}

TEST(absolute_time, takes_negative_minutes_and_wraps_the_largest) {
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    expect_steps({{with_validity(50, true), 0, 1, utc(0, 50)},
                  {with_minutes(50, -3), -3, 1, utc(-3, 50)},
                  {with_minutes(60, largest), largest, 1, utc(largest, 60)},
                  {at_time(59), smallest, 1, utc(smallest, 59)}});
}

TEST(absolute_time, reaches_batch_packages_one_packet_late) {
    instance plugin;
    plugin.decode(ncom_frame(with_minutes(0, 77)));
    plugin.decode(ncom_frame(with_validity(1, true)));
    for (std::uint16_t i = 2; i < 29; ++i)
        plugin.decode(ncom_frame(at_time(i)));
    const std::vector<package> batch = plugin.decode(ncom_frame(at_time(10))).decoded();
    ASSERT_EQ(batch.size(), 31U);
    for (std::size_t i = 0; i < 30; ++i)
        expect_step(batch[i], {at_time(10), 78, 1, utc(77, 28)});
    expect_step(batch[30], {at_time(10), 78, 1, utc(78, 10)});
}

} // namespace
} // namespace harness
