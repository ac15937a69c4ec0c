// The status channels: each writes its own bytes of the record and leaves all others alone.
#include <cmath>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

double twice_root(double value) {
    return std::sqrt(value * value + value * value);
}

template <typename... T>
field at(std::size_t record_offset, T... values) {
    return place(unit + record_offset, values...);
}

// Unsigned words have their top bit set, so that a signed reading shows; bytes that a channel
// leaves unread are 0xEE.
const std::vector<channel_case> channels{
    {0, // byte 7 takes the place of byte 5
     {0x44, 0x33, 0x22, 0x81, 0x01, 0x02, 0x03, 0x04},
     {at(432, -0x7EDDCCBC), {unit + 765, {1, 4, 3}}}},
    {2,
     {0x01, 0x80, 0x02, 0x90, 0x03, 0xA0, 0x04, 0xB0},
     {{unit + 769, {0x01, 0x80, 0x02, 0x90, 0x03, 0xA0, 0x04, 0xB0}}}},
    {3,
     {0x11, 0x81, 0x12, 0x92, 0x13, 0xA3, 0xD3, 0xE3},
     {at(451, 0x8111 / 1000.0, 0x9212 / 1000.0, 0xA313 / 1000.0, twice_root(0x8111 / 1000.0)),
      {unit + 483, {0xD3, 0xE3}}}},
    {4,
     {0x18, 0xFC, 0x2F, 0xF8, 0xFF, 0x7F, 0xD4, 0xE4},
     {at(485, -1000 / 1000.0, -2001 / 1000.0, 32767 / 1000.0, std::uint8_t{0xD4},
         twice_root(-1000 / 1000.0), std::uint8_t{0xE4})}},
    {4, {0, 0, 0, 0, 0xFD, 0xFF}, {at(485, 0.0, 0.0, -3 / 1000.0, '\0', 0.0, '\0')}},
    {5,
     {0x15, 0x85, 0x16, 0x96, 0x17, 0xA7, 0xD5, 0xEE},
     {at(519, degrees(0x8515 / 100000.0), degrees(0x9616 / 100000.0), degrees(0xA717 / 100000.0),
         std::uint8_t{0xD5})}},
    {12,
     {0xFF, 0xFF, 0x00, 0x80, 0xFE, 0x7F, 0xDC, 0xEE},
     {at(628, -1 / 1000.0, -32768 / 1000.0, 32766 / 1000.0, std::uint8_t{0xDC})}},
    {12, {0, 0, 0, 0, 0xFE, 0xFF}, {at(628, 0.0, 0.0, -2 / 1000.0, '\0')}},
    {13,
     {0xFD, 0xFF, 0x01, 0x80, 0xFC, 0xFF, 0xDD, 0xEE},
     {at(678, degrees(-3 / 10000.0), degrees(-32767 / 10000.0), -4 / 1000.0, std::uint8_t{0xDD})}},
    {14,
     {0x21, 0x81, 0x22, 0x92, 0x23, 0xA3, 0xDE, 0xEE},
     {at(653, 0x8121 / 10000.0, 0x9222 / 10000.0, 0xA323 / 10000.0, std::uint8_t{0xDE})}},
    {15,
     {0x31, 0x81, 0x32, 0x92, 0x33, 0xA3, 0xDF, 0xEE},
     {at(703, degrees(0x8131 / 10000.0), degrees(0x9232 / 10000.0), 0xA333 / 1000.0,
         std::uint8_t{0xDF})}},
    // The leap seconds: halved downward, then without their sign; bit 0 tells that they are valid.
    {16, {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0x54}, {{unit + 440, {0x2A, 0}}}},
    {16, {0, 0, 0, 0, 0, 0, 0, 0x80}, {{unit + 440, {64, 0}}}},
    {16, {0, 0, 0, 0, 0, 0, 0, 0xFE}, {{unit + 440, {1, 0}}}},
    {16, {0, 0, 0, 0, 0, 0, 0, 0x00}, {{unit + 440, {0, 0}}}},
    {20, {0xFF, 0xFF, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}, {at(809, 655)}},
    {20, {199, 0, 0xEE, 0xEE, 0, 0, 0, 0}, {at(809, 1)}},
    {20, {200, 0, 0xEE, 0xEE, 0, 0, 0, 0}, {at(809, 2)}},
    {20, {99, 0, 0xEE, 0xEE, 0, 0, 0, 0}, {at(809, 0)}},
    {26,
     {0xFB, 0xFF, 0x42, 0x92, 0x43, 0xA3, 0xD6, 0xEE},
     {at(728, -5 / 1000.0, 0x9242 / 1000.0, 0xA343 / 1000.0, std::uint8_t{0xD6})}},
    {75, {0x51, 0x81, 0x52, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}, {{unit + 753, {0x51, 0x81, 0x52}}}},
    {76,
     {0x61, 0x81, 0x62, 0x82, 0x63, 0x83, 0xEE, 0xEE},
     {{unit + 756, {0x61, 0x81, 0x62, 0x82, 0x63, 0x83}}}},
    {77, {0x71, 0x72, 0x73, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}, {{unit + 762, {0x71, 0x72, 0x73}}}},
    {1, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}}, // unknown from here on
    {6, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}},
    {78, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}},
    {255, {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7, 0xA8}, {}}};

TEST(ncom_status_channel, writes_its_own_bytes_and_keeps_those_of_the_others) {
    const auto packet = [](const channel_case& each) {
        return encode(status_packet(each.channel, each.data));
    };
    expect_channels(
        channels, [&](const channel_case& each) { return ncom_frame(packet(each)); },
        [&](bytes& record, const channel_case& each) {
            ++record[unit + 16];
            record[unit + 176 + 7] ^= 0x80; // two zeros change their sign
            record[unit + 184 + 7] ^= 0x80;
            record[unit + 793] = each.channel;
            record[unit + 805] = packet(each)[71]; // the checksum
        });
}

// The odd byte in front gives the checksum behind the data another bit 0.
TEST(ncom_status_channel, tells_by_bit_0_whether_the_leap_seconds_are_valid) {
    const struct {
        std::uint8_t byte, value;
    } cases[] = {{0x81, 64}, {0xFF, 1}, {0xFD, 2}, {0x01, 0}, {0x7F, 63}};
    instance plugin;
    for (const auto& [byte, value] : cases) {
        const auto packet = status_packet(16, {1, 0, 0, 0, 0, 0, 0, byte});
        const package record = first_package(plugin.decode(ncom_frame(packet)));
        EXPECT_EQ(record.u8(unit + 440), value) << unsigned{byte};
        EXPECT_EQ(record.u8(unit + 441), 1) << unsigned{byte};
    }
}

} // namespace
} // namespace harness
