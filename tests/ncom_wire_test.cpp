// The packet's fixed part: every field from its bytes on the wire to its place in the record.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// The doubles that a first packet leaves in the hunter's record and that need no sine or cosine.
void expect_fields(const package& record, const ncom_packet& packet) {
    expect_doubles(record, unit + 120,
                   {degrees(packet.latitude), degrees(packet.longitude), double{packet.altitude}});
    expect_doubles(record, unit + 240,
                   {degrees(packet.heading / 1000000.0), -degrees(packet.pitch / 1000000.0),
                    degrees(packet.roll / 1000000.0)});
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // y and z of the record point the other way.
        const auto right_handed = [&](double value) { return axis == 0 ? value : -value; };
        const double rate = degrees(packet.rate[axis] / 100000.0);
        const double speed = right_handed(packet.velocity[axis] / 10000.0);
        expect_doubles(record, unit + 24 + 8 * axis,
                       {right_handed(packet.acceleration[axis] / 10000.0)});
        expect_doubles(record, unit + 72 + 8 * axis, {right_handed(rate)});
        expect_doubles(record, unit + 96 + 8 * axis, {rate}); // the copy keeps the sign of the wire
        expect_doubles(record, unit + 192 + 16 * axis, {speed, speed * 3.6});
    }
    for (const std::size_t offset : {144U, 160U, 176U}) // km/h of the vehicle's own axes
        expect_doubles(record, unit + offset + 8, {record.f64(unit + offset) * 3.6});
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

    instance plugin;
    const package record = first_package(plugin.decode(ncom_frame(numbered_packet())));
    expect_fields(record, numbered);
    // Sync byte, navigation status, channel and checksums. Channel 62 is unknown, and nobody has
    // measured a range: the rest stays empty.
    expect_data(record,
                with(bytes(873), {place(0, unit_tags[0]),
                                  {unit, bytes(&record.data[unit], &record.data[unit + 272])},
                                  place(unit + 436, 0x0201),
                                  place(unit + 785, 0xE7, 21, 62, 22, 61, 71)}));

    bytes longer = numbered_packet();
    longer.resize(100, 0xFF);
    instance other;
    EXPECT_EQ(first_package(other.decode(ncom_frame(longer))).data, record.data);
}

TEST(ncom_wire, keeps_signs_limits_and_numbers_that_are_none) {
    ncom_packet extremes; // -1 is FF FF FF on the wire, -8388608 is 00 00 80
    extremes.acceleration = {-1, -8388608, 8388607};
    extremes.rate = {-8388608, 8388607, -1};
    extremes.latitude = -std::numeric_limits<double>::infinity();
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
    for (const ncom_packet& packet : {extremes, negative, ncom_packet{}}) {
        instance plugin;
        expect_fields(first_package(plugin.decode(ncom_frame(packet))), packet);
    }
    // In bytes of the test's own, lest the encoder errs like the decoder.
    instance plugin;
    const bytes wire = with(bytes(72), {{0, {0xE7}}, {3, {0xFF, 0xFF, 0xFF, 0, 0, 0x80}}});
    expect_doubles(first_package(plugin.decode(ncom_frame(wire))), unit + 24, {-0.0001, 838.8608});
}

TEST(ncom_wire, counts_accepted_datagrams_and_notes_their_endpoints) {
    instance plugin;
    plugin.decode(ncom_frame(ncom_packet{}));
    ncom_packet refused;
    refused.navigation_status = 11;
    plugin.decode(ncom_frame(refused));
    const bytes frame = zel::simulation::udp_frame({{10, 20, 30, 40}, 0x1234},
                                                   {{50, 60, 70, 80}, 3000}, encode(ncom_packet{}));
    const package record = first_package(plugin.decode(frame));
    const bytes header{10, 20, 30, 40, 0x34, 0x12, 0, 0, // source, port of the host's byte order
                       50, 60, 70, 80, 0xB8, 0x0B, 0, 0, // destination, port 3000
                       2,  0,  0,  0,  0,    0,    0, 0};
    EXPECT_EQ(bytes(&record.data[unit], &record.data[unit + 24]), header);
}

} // namespace
} // namespace harness
