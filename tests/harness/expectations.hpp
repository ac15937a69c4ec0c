// What comes back from the plug-in, and how it is compared.
#pragma once

#include <functional>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace harness {

/// Where a unit record begins in the data of its package.
inline constexpr std::size_t unit = 4;
/// Stands for "no time to collision".
inline constexpr double no_collision = 2.2250738585072014e-308;
inline constexpr std::array<std::uint32_t, 5> unit_tags{0x00100000, 0x00300000, 0x00400000,
                                                        0x00500000, 0x00600000};

inline double degrees(double radians) {
    return radians * 180.0 / 3.1415927410125732;
}

inline package first_package(const outcome& result) {
    return result.decoded().at(0);
}
inline package target_package(const outcome& result) {
    return result.decoded().at(1);
}

inline void expect_log(const outcome& result, std::uint32_t level, const std::string& message) {
    ASSERT_EQ(result.logs.size(), 1U) << message;
    EXPECT_EQ(result.logs[0].level, level);
    EXPECT_EQ(result.logs[0].message, message);
}

/// The frame is dropped, and one log record says why.
inline void expect_refusal(const outcome& result, std::uint32_t level, const std::string& message) {
    EXPECT_EQ(result.status, 0U);
    EXPECT_TRUE(result.decoded().empty());
    expect_log(result, level, message);
}

inline std::string too_short(const std::string& what, std::size_t least, std::size_t size) {
    return "Unexpected " + what + " size (Expected at least = " + std::to_string(least) +
           ", Received size = " + std::to_string(size) + ").";
}

/// The header values of a package made from a raw package.
inline void expect_header(const package& actual, const raw_package& raw, std::uint32_t nibble) {
    const zel_package_t header = actual.header;
    EXPECT_EQ(+header.source_id, raw.source_id);
    EXPECT_EQ(+header.source_info, raw.source_info);
    EXPECT_EQ(+header.source_info_nibble, nibble);
    EXPECT_EQ(std::memcmp(header.pass_through_block, raw.pass_through_block.data(), 16), 0);
    EXPECT_EQ(+header.reference_timestamp, raw.reference_timestamp);
    EXPECT_EQ(header.reserved_48 + header.reserved_52 + header.reserved_54, 0U);
}

/// What every result has to be, whatever came in.
inline void expect_sound(const outcome& result, std::uint64_t timestamp) {
    for (const log_record& log : result.logs) {
        EXPECT_LE(log.message.size(), 1023U);
        EXPECT_TRUE(log.level == 200 || log.level == 300 || log.level == 400) << log.level;
    }
    for (std::size_t i = 0; i < result.packages.size(); ++i) {
        const package& each = result.packages[i];
        EXPECT_EQ(+each.header.reference_timestamp, timestamp);
        if (i == 0 && each.format_type == "zel.eth")
            continue;
        ASSERT_EQ(each.format_type, "zel.rtrange");
        ASSERT_GE(each.data.size(), 4U);
        const bool rcom = each.u32(0) == 0x00200000;
        EXPECT_EQ(each.data.size(), rcom ? 1191U : 873U);
        EXPECT_TRUE(rcom || std::ranges::count(unit_tags, each.u32(0)) == 1) << each.u32(0);
    }
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

/// Every channel writes its own bytes and leaves all others as they were. `frame` makes a frame of
/// the channel, and `note_packet` changes a record like a packet without content.
inline void
expect_channels(const std::vector<channel_case>& cases,
                const std::function<bytes(const channel_case&)>& frame,
                const std::function<void(bytes& record, const channel_case&)>& note_packet) {
    instance plugin;
    bytes expected = first_package(plugin.decode(frame({99, {}, {}}))).data;
    // In the second round all other channels have left values that must stay.
    for (const int round : {1, 2}) {
        for (const channel_case& each : cases) {
            SCOPED_TRACE("channel " + std::to_string(each.channel) + ", round " +
                         std::to_string(round));
            note_packet(expected, each);
            expected = with(expected, each.written);
            const outcome result = plugin.decode(frame(each));
            expect_data(result.decoded().back(), expected);
            for (const log_record& log : result.logs)
                EXPECT_EQ(log.message.find("Unknown"), std::string::npos) << log.message;
        }
    }
}

/// What every RCOM packet changes: the count, and the number of its status channel.
inline auto note_rcom_packet(std::size_t number_offset) {
    return [=](bytes& record, const channel_case& each) {
        ++record[20];
        record[number_offset] = each.channel;
    };
}

/// Packets of `least` stated and four more actual bytes are taken; a shorter one is refused and
/// changes nothing but the count.
inline void expect_sizes(const bytes& good, std::uint16_t least, const std::string& name) {
    const auto below = static_cast<std::uint16_t>(least - 1);
    const std::string stated_short =
        "Size of " + name + " is less than " + std::to_string(least) + ".";
    const struct {
        std::uint16_t stated;
        std::size_t size;
        std::uint32_t level; ///< 0: the packet is taken
        std::string message;
    } cases[] = {{0, good.size(), 200, stated_short},
                 {below, good.size(), 200, stated_short},
                 {below, good.size() - 1, 200, stated_short},
                 {least, good.size() - 1, 300, too_short(name, good.size(), good.size() - 1)},
                 {least, 4, 300, too_short(name, good.size(), 4)},
                 {least, good.size(), 0, ""},
                 {65535, good.size(), 0, ""},
                 {least, 1000, 0, ""}};
    ASSERT_EQ(good.size(), least + 4U);
    const bool lane = good[1] == 1;
    for (const auto& [stated, size, level, message] : cases) {
        SCOPED_TRACE(std::to_string(stated) + ", " + std::to_string(size));
        instance plugin;
        const bytes before = first_package(plugin.decode(rcom_frame(good))).data;
        // Only the packet's last byte and an early one differ.
        bytes payload = with(good, {place(2, stated), {7, {88}}, {good.size() - 1, {99}}});
        payload.resize(size, 0x77);
        const outcome result = plugin.decode(rcom_frame(payload));
        if (level != 0) {
            expect_refusal(result, level, message);
            expect_data(first_package(plugin.decode(rcom_frame(good))), with(before, {{20, {3}}}));
            continue;
        }
        EXPECT_TRUE(result.logs.empty());
        expect_data(first_package(result), with(before, {{20, {2}},
                                                         place(327, stated),
                                                         {lane ? 534U : 334U, {88}},
                                                         {lane ? 532U : 332U, {99}}}));
    }
}

} // namespace harness
