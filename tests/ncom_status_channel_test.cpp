// The status channels: each writes its own bytes of the record and leaves all others alone.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr std::size_t record = 4;         ///< where the record begins in the package's data
constexpr double pi = 3.1415927410125732; ///< single precision, as in all conversions of angles

using channel_data = std::array<std::uint8_t, 8>;

double degrees(double radians) {
    return radians * 180.0 / pi;
}
double twice_root(double value) {
    return std::sqrt(value * value + value * value);
}

struct write {
    std::size_t offset;
    bytes value;
};

template <typename T>
write at(std::size_t offset, T value) {
    bytes raw(sizeof(T));
    std::memcpy(raw.data(), &value, sizeof(T));
    return {offset, raw};
}
write f64(std::size_t offset, double value) {
    return at(offset, value);
}
write u8(std::size_t offset, std::uint8_t value) {
    return at(offset, value);
}
write u16(std::size_t offset, std::uint16_t value) {
    return at(offset, value);
}

struct channel_case {
    std::uint8_t channel;
    channel_data data; ///< 0xEE where the channel has nothing
    std::vector<write> writes;
};

// Unsigned words have their top bit set, so that a signed reading shows.
const std::vector<channel_case> channels{
    {0, // byte 7 takes the place of byte 5
     {0x44, 0x33, 0x22, 0x81, 0x01, 0x02, 0x03, 0x04},
     {at(432, std::int32_t{-0x7EDDCCBC}), u8(765, 1), u8(766, 4), u8(767, 3)}},
    {2,
     {0x01, 0x80, 0x02, 0x90, 0x03, 0xA0, 0x04, 0xB0},
     {u16(769, 0x8001), u16(771, 0x9002), u16(773, 0xA003), u16(775, 0xB004)}},
    {3,
     {0x11, 0x81, 0x12, 0x92, 0x13, 0xA3, 0xD3, 0xE3},
     {f64(451, 0x8111 / 1000.0), f64(459, 0x9212 / 1000.0), f64(467, 0xA313 / 1000.0),
      f64(475, twice_root(0x8111 / 1000.0)), u8(483, 0xD3), u8(484, 0xE3)}},
    {4,
     {0x18, 0xFC, 0x2F, 0xF8, 0xFF, 0x7F, 0xD4, 0xE4},
     {f64(485, -1000 / 1000.0), f64(493, -2001 / 1000.0), f64(501, 32767 / 1000.0), u8(509, 0xD4),
      f64(510, twice_root(-1000 / 1000.0)), u8(518, 0xE4)}},
    {5,
     {0x15, 0x85, 0x16, 0x96, 0x17, 0xA7, 0xD5, 0xEE},
     {f64(519, degrees(0x8515 / 100000.0)), f64(527, degrees(0x9616 / 100000.0)),
      f64(535, degrees(0xA717 / 100000.0)), u8(543, 0xD5)}},
    {12,
     {0xFF, 0xFF, 0x00, 0x80, 0xFE, 0x7F, 0xDC, 0xEE},
     {f64(628, -1 / 1000.0), f64(636, -32768 / 1000.0), f64(644, 32766 / 1000.0), u8(652, 0xDC)}},
    {13,
     {0xFD, 0xFF, 0x01, 0x80, 0xFC, 0xFF, 0xDD, 0xEE},
     {f64(678, degrees(-3 / 10000.0)), f64(686, degrees(-32767 / 10000.0)), f64(694, -4 / 1000.0),
      u8(702, 0xDD)}},
    {14,
     {0x21, 0x81, 0x22, 0x92, 0x23, 0xA3, 0xDE, 0xEE},
     {f64(653, 0x8121 / 10000.0), f64(661, 0x9222 / 10000.0), f64(669, 0xA323 / 10000.0),
      u8(677, 0xDE)}},
    {15,
     {0x31, 0x81, 0x32, 0x92, 0x33, 0xA3, 0xDF, 0xEE},
     {f64(703, degrees(0x8131 / 10000.0)), f64(711, degrees(0x9232 / 10000.0)),
      f64(719, 0xA333 / 1000.0), u8(727, 0xDF)}},
    {16, {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0x54}, {u8(440, 0x2A), u8(441, 0)}},
    {20, {0xFF, 0xFF, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}, {at(809, std::uint32_t{655})}},
    {26,
     {0xFB, 0xFF, 0x42, 0x92, 0x43, 0xA3, 0xD6, 0xEE},
     {f64(728, -5 / 1000.0), f64(736, 0x9242 / 1000.0), f64(744, 0xA343 / 1000.0), u8(752, 0xD6)}},
    {75, {0x51, 0x81, 0x52, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}, {u16(753, 0x8151), u8(755, 0x52)}},
    {76,
     {0x61, 0x81, 0x62, 0x82, 0x63, 0x83, 0xEE, 0xEE},
     {u16(756, 0x8161), u16(758, 0x8262), u16(760, 0x8363)}},
    {77,
     {0x71, 0x72, 0x73, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE},
     {u8(762, 0x71), u8(763, 0x72), u8(764, 0x73)}},
    {1, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}}, // unknown from here on
    {6, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}},
    {78, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}},
    {255, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}}};

/// The hunter's data after a further standstill packet: what the channel writes, and what every
/// packet changes.
bytes after_packet(const package& before, std::uint8_t channel, const channel_data& sent,
                   const std::vector<write>& writes) {
    bytes data = before.data;
    const auto put = [&](const write& part) {
        std::copy(part.value.begin(), part.value.end(),
                  data.begin() + static_cast<std::ptrdiff_t>(record + part.offset));
    };
    put(at(16, before.u64(record + 16) + 1));
    put(f64(176, -before.f64(record + 176)));
    put(f64(184, -before.f64(record + 184)));
    put(at(793, std::uint32_t{channel}));
    put(at(805, std::uint32_t{zel::simulation::encode(status_packet(channel, sent))[71]}));
    std::for_each(writes.begin(), writes.end(), put);
    return data;
}

package decode(instance& unit, std::uint8_t channel, const channel_data& data) {
    return unit.decode(ncom_frame(status_packet(channel, data))).decoded().at(0);
}

/// Decodes the channels one after the other and compares whole records.
void run_channels(const std::vector<channel_case>& order) {
    instance unit;
    package before = decode(unit, 1, {});
    for (const auto& [channel, data, writes] : order) {
        const package after = decode(unit, channel, data);
        const bytes expected = after_packet(before, channel, data, writes);
        ASSERT_EQ(after.data.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(after.data[i], expected[i])
                << "channel " << unsigned{channel} << ", record offset " << i - record;
        before = after;
    }
}

TEST(ncom_status_channel, writes_its_own_bytes_and_keeps_those_of_the_others) {
    std::vector<channel_case> order = channels;
    run_channels(order);
    std::reverse(order.begin(), order.end());
    run_channels(order);
}

TEST(ncom_status_channel, halves_the_leap_seconds_downward_and_drops_their_sign) {
    struct leap_case {
        std::uint8_t byte, value, valid;
    };
    instance unit;
    for (const auto& [byte, value, valid] : {leap_case{0x80, 64, 0},
                                             {0x81, 64, 1},
                                             {0xFF, 1, 1},
                                             {0xFE, 1, 0},
                                             {0xFD, 2, 1},
                                             {0x7F, 63, 1},
                                             {0x02, 1, 0},
                                             {0x01, 0, 1},
                                             {0x00, 0, 0}}) {
        const package decoded = decode(unit, 16, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, byte});
        EXPECT_EQ(decoded.u8(record + 440), value) << unsigned{byte};
        EXPECT_EQ(decoded.u8(record + 441), valid) << unsigned{byte};
    }
}

TEST(ncom_status_channel, divides_channel_20_without_rounding) {
    struct division_case {
        std::uint8_t low, high;
        std::uint32_t quotient;
    };
    instance unit;
    for (const auto& [low, high, quotient] :
         {division_case{199, 0, 1}, {200, 0, 2}, {99, 0, 0}, {0x39, 0x30, 123}}) // 0x3039 is 12345
        EXPECT_EQ(decode(unit, 20, {low, high, 0xFF, 0xFF}).u32(record + 809), quotient);
}

} // namespace
