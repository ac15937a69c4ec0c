// The fixed fields of the extended range packet, the packages it leads to, and which packets are
// taken at all.
#include <cstdint>
#include <limits>
#include <string>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

// clang-format off
/// A packet about target 3 with a value of its own in every field.
const bytes distinct{'W', 2, 0x34, 0x12, 0xDC, 0xFE, 3, 71,
                     0xE9, 0x03, 0, 0,  0x2E, 0xF8, 0xFF, 0xFF,  0x2F, 0x01,  0x6C, 0xFE,
                     0x8D, 0x13, 0, 0,  0x8A, 0xE8, 0xFF, 0xFF,
                     0x5F, 0x1B, 0, 0,  0xB8, 0xE0, 0xFF, 0xFF,
                     0xE9, 0xFD,  0x42, 0x9C,  140, 1,  1, 2, 3, 4, 5, 6, 7, 8,
                     0x8D, 0x03,  0xF2, 0x03,  0xA9, 0xFB,  0x44, 0xFB,
                     158, 159, 160, 161, 0xCD, 0xAB, 164};
// clang-format on

TEST(rcom_extended_range, every_field_has_its_place) {
    for (const int sign : {1, -1}) { // of all signed fields
        const auto s16 = [&](int value) { return static_cast<std::int16_t>(sign * value); };
        const bytes packet =
            with(distinct, {place(8, sign * 1001, sign * -2002, s16(303), s16(-404), sign * 5005,
                                  sign * -6006, sign * 7007, sign * -8008),
                            place(50, s16(909), s16(1010), s16(-1111), s16(-1212))});
        EXPECT_EQ(packet == distinct, sign == 1);
        const double kmh = sign * 9.09 * 3.6;
        expect_data(
            first_package(instance().decode(rcom_frame(packet))),
            with(blank_rcom_record(),
                 {{28, {0xDC, 0xFE}},
                  {55, {1, 2, 3, 4, 5, 6, 7, 8}},
                  {325, {'W', 2, 0x34, 0x12, 0, 0, 1, 164, 3, 71, 160, 161, 0xCD, 0xAB}},
                  place(339, sign * -1.001, sign * -2.002, sign * -3.03, sign * -4.04, sign * 5.005,
                        sign * -6.006, sign * 7.007, sign * -8.008, 650.01, 400.02),
                  {419, {140}},
                  place(460, sign * 9.09, kmh, sign * -10.1, kmh, sign * 11.11, sign * 11.11 * 3.6,
                        sign * -12.12, sign * -12.12 * 3.6),
                  {524, {158, 159}}}));
    }
}

TEST(rcom_extended_range, zero_of_a_reversed_axis_is_negative) {
    instance plugin;
    expect_data(first_package(plugin.decode(rcom_frame(range_packet(0)))),
                with(blank_rcom_record(), {{325, {'W', 2, 65, 0, 0, 0, 1}},
                                           place(339, -0.0, 0.0, -0.0),
                                           place(476, -0.0, 0.0, -0.0, -0.0)}));
}

TEST(rcom_extended_range, packages_of_every_unit) {
    for (std::uint8_t target = 0; target <= 4; ++target) {
        instance plugin;
        const raw_package raw = recorder_package(rcom_frame(range_packet(target)), 987654321);
        const auto packages = plugin.transform(raw).decoded();
        ASSERT_EQ(packages.size(), target == 0 ? 1U : 2U);
        for (const package& each : packages)
            expect_header(each, raw, 0xA);
        if (target == 0)
            continue;
        EXPECT_EQ(packages[1].data.size(), 873U);
        EXPECT_EQ(packages[1].u32(0), unit_tags[target]);
    }
}

TEST(rcom_extended_range, short_packets_are_refused) {
    expect_sizes(distinct, 61, "RCOM extended range packet");
}

TEST(rcom_extended_range, refused_and_ignored_packets_are_counted) {
    instance plugin;
    for (const std::uint8_t type : bytes{0, 4, 5, 255})
        EXPECT_TRUE(plugin.decode(rcom_frame(bytes{'W', type, 0, 0})).decoded().empty());
    plugin.decode(rcom_frame(range_packet(5)));
    plugin.decode(rcom_frame(bytes{'V', 2, 0, 0}));
    EXPECT_EQ(first_package(plugin.decode(rcom_frame(range_packet(0)))).u64(20), 6U);
}

TEST(rcom_extended_range, plausible_longitudinal_range) {
    const std::pair<std::int32_t, double> cases[] = {
        {1'000'000'000, 1e6},
        {-1'000'000'000, -1e6},
        {1'000'000'001, -2.002},
        {-1'000'000'001, -2.002},
        {std::numeric_limits<std::int32_t>::min(), -2.002}};
    for (const auto& [raw, stored] : cases) {
        instance plugin;
        plugin.decode(rcom_frame(distinct));
        const outcome result = plugin.decode(rcom_frame(with(distinct, {place(12, raw)})));
        expect_doubles(first_package(result), 347, {stored});
        expect_doubles(target_package(result), unit + 572, {stored});
    }
}

TEST(rcom_extended_range, implausible_packet_acts_with_earlier_values) {
    instance plugin;
    const bytes good = with(distinct, {{41, {8}}, place(42, 123456789, -45)});
    const bytes before = first_package(plugin.decode(rcom_frame(good))).data;

    extended_range_packet packet = range_packet(2, 8, two(1, 2));
    packet.range_longitudinal = 1'000'000'001;
    outcome result = plugin.decode(rcom_frame(packet));
    expect_data(first_package(result), with(before, {{20, {2}}}));
    const package target = target_package(result);
    EXPECT_EQ(target.u32(0), unit_tags[2]);
    expect_doubles(target, unit + 120, {12.3456789, -45 / 1e7});
    expect_doubles(target, unit + 272, {7.007, -8.008, 400.02});
    expect_doubles(target, unit + 564, {-1.001, -2.002, -3.03, -4.04});

    packet.status_channel = 9;
    packet.status_data = {10, 0, 0, 1, 10, 0, 0, 2};
    result = plugin.decode(rcom_frame(packet));
    EXPECT_EQ(result.logs.size(), 2U);
    expect_data(first_package(result), with(before, {{20, {3}}}));
    EXPECT_EQ(first_package(plugin.decode(ncom_frame(ncom_packet{}, {10, 0, 0, 2}))).u32(0),
              unit_tags[2]);
    EXPECT_TRUE(plugin.decode(rcom_frame(packet)).logs.empty());

    packet.status_channel = 22;
    result = plugin.decode(rcom_frame(packet));
    EXPECT_TRUE(result.logs.empty());
    EXPECT_EQ(result.decoded().size(), 2U);
    packet.target_number = 5;
    expect_refusal(plugin.decode(rcom_frame(packet)), 200, "Invalid RCOM Target Number.");
}

TEST(rcom_extended_range, invalid_target_number_keeps_the_values_and_identifies_nobody) {
    for (const std::uint8_t target : bytes{5, 255}) {
        instance plugin;
        const bytes frame = rcom_frame(with(distinct, {{6, {target}}, {41, {9}}}));
        expect_refusal(plugin.decode(frame), 200, "Invalid RCOM Target Number.");
        const package rcom = first_package(plugin.decode(rcom_frame(lane_packet{})));
        EXPECT_EQ(rcom.u8(333), target);
        EXPECT_EQ(rcom.u64(452), 0x0807060504030201U);
        expect_doubles(rcom, 347, {-2.002});
    }
}

} // namespace
} // namespace harness
