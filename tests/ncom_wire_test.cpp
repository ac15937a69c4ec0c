// The packet's fixed part: every field from its bytes on the wire to its place in the record.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr std::size_t record = 4;         ///< where the record begins in the package's data
constexpr double pi = 3.1415927410125732; ///< single precision, as in all conversions of angles

double degrees(double radians) {
    return radians * 180.0 / pi;
}

struct field {
    std::size_t offset;
    double value;
};

/// The doubles that a first packet leaves in the hunter's record and that need no sine or cosine.
std::vector<field> expected_fields(const ncom_packet& packet) {
    const auto right_handed = [](std::size_t axis, double value) {
        return axis == 0 ? value : -value; // y and z of the record point the other way
    };
    std::vector<field> fields{{120, degrees(packet.latitude)},
                              {128, degrees(packet.longitude)},
                              {136, double{packet.altitude}},
                              {240, degrees(packet.heading / 1000000.0)},
                              {248, -degrees(packet.pitch / 1000000.0)},
                              {256, degrees(packet.roll / 1000000.0)}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double rate = degrees(packet.rate[axis] / 100000.0);
        const double speed = right_handed(axis, packet.velocity[axis] / 10000.0);
        fields.push_back({24 + 8 * axis, right_handed(axis, packet.acceleration[axis] / 10000.0)});
        fields.push_back({72 + 8 * axis, right_handed(axis, rate)});
        fields.push_back({96 + 8 * axis, rate}); // the copy keeps the sign of the wire
        fields.push_back({192 + 16 * axis, speed});
        fields.push_back({200 + 16 * axis, speed * 3.6});
    }
    return fields;
}

void expect_fields(const package& decoded, const ncom_packet& packet) {
    std::vector<field> fields = expected_fields(packet);
    for (const std::size_t offset : {144U, 160U, 176U}) // km/h of the vehicle's own axes
        fields.push_back({offset + 8, decoded.f64(record + offset) * 3.6});
    for (const auto& [offset, value] : fields)
        EXPECT_EQ(decoded.f64_bits(record + offset), std::bit_cast<std::uint64_t>(value))
            << "offset " << offset << ", expected " << value;
}

bytes part(const package& decoded, std::size_t begin, std::size_t end) {
    return bytes(&decoded.data[record + begin], &decoded.data[record + end]);
}

/// A packet in which every byte but the first is its own position; the checksums are wrong.
bytes numbered_packet() {
    bytes wire(72);
    std::iota(wire.begin(), wire.end(), std::uint8_t{0});
    wire[0] = 0xE7;
    return wire;
}

TEST(ncom_wire, takes_every_field_from_its_own_bytes) {
    ncom_packet numbered;
    numbered.acceleration = {0x050403, 0x080706, 0x0B0A09};
    numbered.rate = {0x0E0D0C, 0x11100F, 0x141312};
    numbered.latitude = std::bit_cast<double>(0x1E1D1C1B1A191817U);
    numbered.longitude = std::bit_cast<double>(0x262524232221201FU);
    numbered.altitude = std::bit_cast<float>(0x2A292827U);
    numbered.velocity = {0x2D2C2B, 0x302F2E, 0x333231};
    numbered.heading = 0x363534;
    numbered.pitch = 0x393837;
    numbered.roll = 0x3C3B3A;

    instance unit;
    const package decoded = unit.decode(ncom_frame(numbered_packet())).decoded().at(0);
    expect_fields(decoded, numbered);
    EXPECT_EQ(decoded.u32(record + 436), 0x0201U);                // time
    const bytes trailer{0xE7, 0, 0, 0, 21, 0, 0, 0, 62, 0, 0, 0,  // sync, navigation, channel
                        22,   0, 0, 0, 61, 0, 0, 0, 71, 0, 0, 0}; // checksums
    EXPECT_EQ(part(decoded, 785, 809), trailer);
    // Channel 62 is unknown, and nobody has measured a range: the rest stays empty.
    EXPECT_EQ(part(decoded, 272, 436), bytes(436 - 272));
    EXPECT_EQ(part(decoded, 440, 785), bytes(785 - 440));
    EXPECT_EQ(part(decoded, 809, 868), bytes(868 - 809));
    EXPECT_EQ(decoded.data.size(), 4U + 869U);
    EXPECT_EQ(decoded.u32(0), 0x00100000U);

    bytes longer = numbered_packet();
    longer.resize(100, 0xFF);
    instance other;
    EXPECT_EQ(other.decode(ncom_frame(longer)).decoded().at(0).data, decoded.data);
}

TEST(ncom_wire, keeps_signs_limits_and_numbers_that_are_none) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    ncom_packet extremes; // -1 is FF FF FF on the wire, -8388608 is 00 00 80
    extremes.acceleration = {-1, -8388608, 8388607};
    extremes.rate = {-8388608, 8388607, -1};
    extremes.latitude = -infinity;
    extremes.longitude = std::bit_cast<double>(0x7FF8000000000123U);
    extremes.altitude = std::bit_cast<float>(0x7FC00001U);
    extremes.velocity = {8388607, -1, -8388608};
    extremes.heading = -8388608;
    extremes.pitch = -1;
    extremes.roll = 8388607;
    ncom_packet negative;
    negative.acceleration = {-8388608, 1, -2};
    negative.rate = {-3, -4, 5};
    negative.latitude = -0.9;
    negative.longitude = 0.1;
    negative.altitude = -12.34F;
    negative.velocity = {-6, 7, 8};
    negative.heading = -9;
    negative.pitch = -10;
    negative.roll = -11;
    const ncom_packet zero;

    for (const ncom_packet& packet : {extremes, negative, zero}) {
        instance unit;
        expect_fields(unit.decode(ncom_frame(packet)).decoded().at(0), packet);
    }

    bytes wire(72);
    wire[0] = 0xE7;
    wire[3] = wire[4] = wire[5] = 0xFF;
    wire[8] = 0x80;
    instance unit;
    const package decoded = unit.decode(ncom_frame(wire)).decoded().at(0);
    EXPECT_EQ(decoded.f64(record + 24), -0.0001);
    EXPECT_EQ(decoded.f64(record + 32), 838.8608);
}

TEST(ncom_wire, counts_accepted_datagrams_and_notes_their_endpoints) {
    instance unit;
    unit.decode(ncom_frame(ncom_packet{}));
    ncom_packet refused;
    refused.navigation_status = 11;
    EXPECT_TRUE(unit.decode(ncom_frame(refused)).decoded().empty());

    const bytes frame =
        zel::simulation::udp_frame({{10, 20, 30, 40}, 0x1234}, {{50, 60, 70, 80}, 3000},
                                   zel::simulation::encode(ncom_packet{}));
    const package decoded = unit.decode(frame).decoded().at(0);
    const bytes header{10, 20, 30, 40, 0x34, 0x12, 0, 0, // source, port of the host's byte order
                       50, 60, 70, 80, 0xB8, 0x0B, 0, 0, // destination, port 3000
                       2,  0,  0,  0,  0,    0,    0, 0};
    EXPECT_EQ(part(decoded, 0, 24), header);
}

} // namespace
