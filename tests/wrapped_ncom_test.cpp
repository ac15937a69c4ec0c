// NCOM packets that an RT-Range unit relays inside RCOM.
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// With an instance that knows the hunter and target 2.
class wrapped_ncom : public testing::Test {
protected:
    wrapped_ncom() { plugin.decode(identification(2, hunter_address, target_address)); }

    instance plugin;
};

bytes wrapped(const ip_address& address) {
    return encode_wrapped_ncom(address, encode(ncom_packet{}));
}

TEST_F(wrapped_ncom, refusals) {
    const bytes good = wrapped(target_address);
    const std::string meta = "wrapped NCOM meta info frame";
    const std::string frame = "wrapped NCOM frame";
    const std::string structure_b = "NCOM structure B is not supported.";
    const std::string sync = "Invalid sync byte. Expected = 231, Received = 230.";
    const std::string stranger = "Unknown target (IP ' 195.0.0.21 ).";
    const struct {
        bytes payload;
        std::uint32_t level;
        std::string message;
    } cases[] = {
        {cut(good, 4), 300, too_short(meta, 16, 0)},
        {cut(good, 19), 300, too_short(meta, 16, 15)},
        {cut(good, 20), 300, too_short(frame, 72, 0)},
        {cut(good, 91), 300, too_short(frame, 72, 71)},
        {with(good, {{20, {0}}, {41, {11}}}), 300, structure_b},
        {with(good, {{4, {1}}, {20, {230}}}), 300, sync},
        {wrapped({1, 20, 200, 255}), 200, "Unknown target (IP ' 1.20.200.255 )."},
        {with(good, {{8, {1}}}), 200, stranger},
        {with(good, {{11, {0x80}}}), 200, stranger},
        {with(wrapped(hunter_address), {{9, {1}}}), 200, "Unknown target (IP ' 195.0.0.10 )."}};
    for (const auto& each : cases)
        expect_refusal(plugin.decode(rcom_frame(each.payload)), each.level, each.message);

    // None of them was counted as the target's. The rest of the meta information, the stated length
    // and what follows the packet are not looked at.
    bytes payload = with(good, {{2, {0, 0}}, {12, {1, 2, 3, 4, 5, 6, 7, 0xFF}}});
    ASSERT_EQ(payload.size(), 92U);
    EXPECT_EQ(target_package(plugin.decode(rcom_frame(payload))).u64(unit + 16), 1U);
    payload.resize(500, 0x77);
    EXPECT_EQ(target_package(plugin.decode(rcom_frame(payload))).u64(unit + 16), 2U);
}

TEST_F(wrapped_ncom, target_record_and_packages) {
    ncom_packet packet = status_packet(75, {0x34, 0x12, 0x56, 0, 0, 0, 0, 0});
    packet.time_in_minute_ms = 1234;
    packet.acceleration = {15000, 0, 0};
    packet.latitude = 0.5;
    const ip_address relay{10, 9, 8, 7};
    const bytes payload = encode_wrapped_ncom(target_address, encode(packet));
    const outcome result = plugin.decode(rcom_frame(payload, relay), 5000);
    EXPECT_TRUE(result.logs.empty());
    const auto packages = result.decoded();
    ASSERT_EQ(packages.size(), 2U);
    // In the RCOM record only the endpoints and the count are of this datagram.
    const package& rcom = packages[0];
    EXPECT_EQ(rcom.data.size(), 1191U);
    EXPECT_EQ(rcom.u32(0), 0x00200000U);
    EXPECT_EQ(rcom.at<ip_address>(4), relay);
    EXPECT_EQ(rcom.u64(20), 2U);
    EXPECT_EQ(rcom.u8(326), 2);
    EXPECT_EQ(rcom.u32(327), 65U);

    const package& target = packages[1];
    EXPECT_EQ(target.data.size(), 873U);
    EXPECT_EQ(target.u32(0), unit_tags[2]);
    EXPECT_EQ(+target.header.reference_timestamp, 5000U);
    EXPECT_EQ(target.at<ip_address>(unit), target_address);
    EXPECT_EQ(target.u32(unit + 4), 51000U);
    EXPECT_EQ(target.at<ip_address>(unit + 8), relay); // where the datagram came from
    EXPECT_EQ(target.u32(unit + 12), 3003U);
    EXPECT_EQ(target.u64(unit + 16), 1U);
    expect_doubles(target, unit + 24, {1.5});
    expect_doubles(target, unit + 120, {degrees(0.5)});
    expect_doubles(target, unit + 360, {1.5}); // against a hunter at rest
    EXPECT_EQ(target.u32(unit + 436), 1234U);
    EXPECT_EQ(target.u16(unit + 753), 0x1234);
    EXPECT_EQ(target.u32(unit + 785), 231U);
    EXPECT_EQ(target.u32(unit + 793), 0U);

    // A datagram of the target's own goes on with the same record.
    const package direct = first_package(plugin.decode(ncom_frame(packet, target_address), 5000));
    EXPECT_EQ(direct.at<ip_address>(unit + 8), broadcast);
    EXPECT_EQ(direct.u32(unit + 12), 3000U);
    EXPECT_EQ(direct.u64(unit + 16), 2U);
}

TEST_F(wrapped_ncom, hunter_record_without_package_of_its_own) {
    ncom_packet packet = status_packet(0, {16, 0, 0, 0, 1, 2, 3, 4});
    packet.time_in_minute_ms = 59999;
    const auto packages = plugin.decode(wrapped_frame(hunter_address, packet)).decoded();
    ASSERT_EQ(packages.size(), 1U);
    EXPECT_EQ(packages[0].u32(0), 0x00200000U);

    // The minute of the relayed packet rolls over with the next direct one.
    const package hunter = first_package(plugin.decode(ncom_frame(status_packet(1, {}))));
    EXPECT_EQ(hunter.u32(0), unit_tags[0]);
    EXPECT_EQ(hunter.u64(unit + 16), 2U);
    EXPECT_EQ(hunter.s32(unit + 432), 17);
    EXPECT_EQ(hunter.u8(unit + 766), 4);
}

TEST(wrapped_ncom_units, targets_are_asked_before_the_hunter) {
    instance plugin;
    const auto tag_of = [&](const ip_address& address) {
        return target_package(plugin.decode(wrapped_frame(address))).u32(0);
    };
    expect_refusal(plugin.decode(wrapped_frame(hunter_address)), 200,
                   "Unknown target (IP ' 195.0.0.10 ).");
    EXPECT_EQ(tag_of({0, 0, 0, 0}), unit_tags[1]); // which is every unknown target's address
    for (const ip_address& high : {ip_address{10, 0, 0, 200}, {200, 0, 0, 1}}) {
        plugin.decode(identification(4, hunter_address, high));
        EXPECT_EQ(tag_of(high), unit_tags[4]);
    }
    plugin.decode(identification(3, hunter_address, hunter_address));
    EXPECT_EQ(tag_of(hunter_address), unit_tags[3]);
    EXPECT_EQ(first_package(plugin.decode(ncom_frame(ncom_packet{}))).u32(0), unit_tags[0]);
    plugin.decode(identification(2, hunter_address, hunter_address));
    EXPECT_EQ(tag_of(hunter_address), unit_tags[2]);
}

TEST_F(wrapped_ncom, sample_batch_stands_before_the_rcom_package) {
    ncom_packet packet;
    packet.acceleration = {20000, 0, 0};
    for (int i = 0; i < 29; ++i)
        EXPECT_EQ(plugin.decode(i < 14 ? ncom_frame(packet) : wrapped_frame(hunter_address, packet))
                      .decoded()
                      .size(),
                  1U);
    plugin.decode(rcom_frame(range_packet(2))); // counts for no batch

    packet.acceleration = {50000, 0, 0};
    const auto packages = plugin.decode(wrapped_frame(target_address, packet)).decoded();
    ASSERT_EQ(packages.size(), 32U);
    for (std::size_t i = 0; i < 30; ++i) {
        EXPECT_EQ(packages[i].u32(0), unit_tags[2]);
        EXPECT_EQ(packages[i].u64(unit + 16), 1U);
        expect_doubles(packages[i], unit + 24, {5.0});
    }
    expect_doubles(packages[0], unit + 813, {7e-11 * 2.0}); // the first sample is the hunter's
    EXPECT_EQ(packages[30].u32(0), 0x00200000U);
    EXPECT_EQ(packages[31].u32(0), unit_tags[2]);
    EXPECT_NE(packages[31].f64(unit + 813), 0.0);
    expect_doubles(packages[31], unit + 813, {packages[29].f64(unit + 813)});

    for (int i = 0; i < 29; ++i)
        EXPECT_EQ(plugin.decode(ncom_frame(packet, target_address)).decoded().size(), 1U);
    const auto of_hunter = plugin.decode(wrapped_frame(hunter_address, packet)).decoded();
    ASSERT_EQ(of_hunter.size(), 31U);
    EXPECT_EQ(of_hunter[0].u32(0), unit_tags[0]);
    EXPECT_EQ(of_hunter[29].u32(0), unit_tags[0]);
    EXPECT_EQ(of_hunter[30].u32(0), 0x00200000U);
}

} // namespace
} // namespace harness
