// RCOM packets on their way to the plug-in, and how the records that come back are compared.
#pragma once

#include <functional>

#include <gtest/gtest.h>

#include "simulation/rcom_packets.hpp"
#include "tests/harness/frames.hpp"

namespace harness {

using zel::simulation::encode_wrapped_ncom;
using zel::simulation::extended_range_packet;
using zel::simulation::lane_packet;
using zel::simulation::wire_writer;
using channel_data = std::array<std::uint8_t, 8>;

/// Where a unit record begins in the data of its package.
inline constexpr std::size_t unit = 4;
/// Stands for "no time to collision".
inline constexpr double no_collision = 2.2250738585072014e-308;
inline constexpr std::array<std::uint32_t, 5> unit_tags{0x00100000, 0x00300000, 0x00400000,
                                                        0x00500000, 0x00600000};

inline double degrees(double radians) {
    return radians * 180.0 / 3.1415927410125732;
}

inline bytes rcom_frame(const extended_range_packet& packet) {
    return rcom_frame(encode(packet));
}
inline bytes rcom_frame(const lane_packet& packet) {
    return rcom_frame(encode(packet));
}
inline bytes wrapped_frame(const ip_address& address, const ncom_packet& packet = {}) {
    return rcom_frame(encode_wrapped_ncom(address, encode(packet)));
}

inline extended_range_packet range_packet(std::uint8_t target, std::uint8_t channel = 1,
                                          const channel_data& data = {}) {
    extended_range_packet packet;
    packet.target_number = target;
    packet.status_channel = channel;
    packet.status_data = data;
    return packet;
}

inline channel_data channel_of(const wire_writer& writer) {
    channel_data data{};
    std::copy(writer.written().begin(), writer.written().end(), data.begin());
    return data;
}
inline channel_data two(std::int32_t first, std::int32_t second) {
    return channel_of(wire_writer().s32(first).s32(second));
}
inline channel_data three(std::int32_t first, std::int32_t second, std::int16_t third) {
    return channel_of(wire_writer().s24(first).s24(second).s16(third));
}

/// Names the addresses of the hunter and of a target.
inline bytes identification(std::uint8_t target, const ip_address& hunter_ip,
                            const ip_address& target_ip) {
    const auto data = channel_of(wire_writer().append(hunter_ip).append(target_ip));
    return rcom_frame(range_packet(target, 9, data));
}

inline package first_package(const outcome& result) {
    return result.decoded().at(0);
}
inline package target_package(const outcome& result) {
    return result.decoded().at(1);
}

inline void expect_refusal(const outcome& result, std::uint32_t level, const std::string& message) {
    EXPECT_TRUE(result.decoded().empty());
    ASSERT_EQ(result.logs.size(), 1U);
    EXPECT_EQ(result.logs[0].level, level);
    EXPECT_EQ(result.logs[0].message, message);
}

/// Equal to the last bit, so that -0.0 is not 0.0.
inline void expect_doubles(const package& actual, std::size_t offset,
                           const std::vector<double>& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(actual.f64_bits(offset + 8 * i), std::bit_cast<std::uint64_t>(expected[i]))
            << "offset " << offset + 8 * i << ": " << actual.f64(offset + 8 * i) << " instead of "
            << expected[i];
}

/// Bytes at an offset of a package or payload.
struct field {
    std::size_t offset;
    bytes content;
};

/// The bytes of values one after the other.
template <typename... T>
field place(std::size_t offset, T... values) {
    field result{offset, {}};
    const auto append = [&](const auto& raw) {
        for (const std::uint8_t byte : raw)
            result.content.push_back(byte);
    };
    (append(std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(values)), ...);
    return result;
}

inline bytes with(bytes data, const std::vector<field>& fields) {
    for (const field& each : fields)
        std::copy(each.content.begin(), each.content.end(),
                  data.begin() + static_cast<std::ptrdiff_t>(each.offset));
    return data;
}

/// The record of one RCOM datagram, which no handler has written yet.
inline bytes blank_rcom_record() {
    return with(bytes(1191), {place(0, 0x00200000),
                              {4, {195, 0, 0, 10}},
                              place(8, 51000),
                              {12, {195, 0, 0, 255}},
                              place(16, 3003),
                              {20, {1}}});
}

inline void expect_data(const package& actual, const bytes& expected) {
    ASSERT_EQ(actual.data.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(int{actual.data[i]}, int{expected[i]}) << "offset " << i;
}

struct channel_case {
    std::uint8_t channel;
    channel_data data;
    std::vector<field> written;
};

/// Every channel writes its own bytes and its number, and leaves all others as they were.
inline void expect_channels(const std::vector<channel_case>& cases, std::size_t number_offset,
                            const std::function<bytes(const channel_case&)>& frame) {
    instance plugin;
    bytes expected = first_package(plugin.decode(frame({99, {}, {}}))).data;
    // In the second round all other channels have left values that must stay.
    for (const int round : {1, 2}) {
        for (const channel_case& each : cases) {
            SCOPED_TRACE("channel " + std::to_string(each.channel) + ", round " +
                         std::to_string(round));
            ++expected[20];
            expected[number_offset] = each.channel;
            expected = with(expected, each.written);
            expect_data(first_package(plugin.decode(frame(each))), expected);
        }
    }
}

struct size_case {
    std::uint16_t stated_length;
    std::size_t size;
    std::uint32_t level; ///< 0: the packet is taken
    std::string message;
};

/// A refused packet changes nothing but the count.
inline void expect_sizes(const bytes& good, const std::vector<size_case>& cases) {
    for (const size_case& each : cases) {
        SCOPED_TRACE(std::to_string(each.stated_length) + ", " + std::to_string(each.size));
        instance plugin;
        const bytes before = first_package(plugin.decode(rcom_frame(good))).data;
        // Only the packet's last byte and an early one differ.
        bytes payload =
            with(good, {place(2, each.stated_length), {7, {88}}, {good.size() - 1, {99}}});
        payload.resize(each.size, 0x77);
        const outcome result = plugin.decode(rcom_frame(payload));
        if (each.level != 0) {
            expect_refusal(result, each.level, each.message);
            expect_data(first_package(plugin.decode(rcom_frame(good))), with(before, {{20, {3}}}));
            continue;
        }
        EXPECT_TRUE(result.logs.empty());
        const bool lane = good[1] == 1;
        expect_data(first_package(result), with(before, {{20, {2}},
                                                         place(327, each.stated_length),
                                                         {lane ? 534U : 334U, {88}},
                                                         {lane ? 532U : 332U, {99}}}));
    }
}

} // namespace harness
