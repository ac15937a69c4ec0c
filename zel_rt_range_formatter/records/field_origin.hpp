// Which packets bring the value of a field.
#pragma once

#include <cstdint>
#include <string>

namespace zel::toolbox::rt_range {

/// Packets that change a record. NCOM packets are those of the record's own unit, direct or wrapped
/// in RCOM; extended range packets are those about that unit.
enum class origin_packet : std::uint8_t { none, ncom, hunter_ncom, ext_range, lane, rcom };

/// A packet, or one of its status channels.
struct packet_part {
    static constexpr std::int16_t whole_packet = -1;

    origin_packet packet = origin_packet::none;
    std::int16_t channel = whole_packet;

    friend constexpr bool operator==(const packet_part&, const packet_part&) = default;
};

/// How the two parts of an origin act together.
enum class origin_rule : std::uint8_t {
    never,  ///< nothing writes the field
    first,  ///< the first part writes the field
    either, ///< both parts write the field
    both,   ///< the field is computed from both parts
    by_unit ///< the first part writes the field of a target, the second that of the hunter
};

/// What brings the value of a field.
struct field_origin {
    origin_rule rule;
    packet_part first{};
    packet_part second{};
};

/// For example "NCOM and NCOM channel 4".
std::string text_of(const field_origin& origin);

/// The vocabulary of the field tables.
namespace origins {

inline constexpr packet_part ncom_packet{origin_packet::ncom};
inline constexpr packet_part ext_range_packet{origin_packet::ext_range};
inline constexpr packet_part lane_packet{origin_packet::lane};

inline constexpr field_origin nothing{origin_rule::never};
inline constexpr field_origin ncom{origin_rule::first, ncom_packet};
inline constexpr field_origin ext_range{origin_rule::first, ext_range_packet};
inline constexpr field_origin lane{origin_rule::first, lane_packet};
inline constexpr field_origin rcom{origin_rule::first, {origin_packet::rcom}};

/// A status channel of the NCOM, extended range or lane packet.
consteval field_origin ncom_channel(std::int16_t channel) {
    return {origin_rule::first, {origin_packet::ncom, channel}};
}
consteval field_origin range_channel(std::int16_t channel) {
    return {origin_rule::first, {origin_packet::ext_range, channel}};
}
consteval field_origin lane_channel(std::int16_t channel) {
    return {origin_rule::first, {origin_packet::lane, channel}};
}

inline constexpr field_origin lane_or_ext_range{origin_rule::either, lane_packet, ext_range_packet};
inline constexpr field_origin ncom_and_hunter_ncom{
    origin_rule::both, ncom_packet, {origin_packet::hunter_ncom}};

consteval field_origin ncom_or_range_channel(std::int16_t channel) {
    return {origin_rule::either, ncom_packet, {origin_packet::ext_range, channel}};
}
consteval field_origin ncom_and_channel(std::int16_t channel) {
    return {origin_rule::both, ncom_packet, {origin_packet::ncom, channel}};
}
consteval field_origin ncom_channels(std::int16_t first, std::int16_t second) {
    return {origin_rule::both, {origin_packet::ncom, first}, {origin_packet::ncom, second}};
}
consteval field_origin range_channel_by_unit(std::int16_t of_targets, std::int16_t of_hunter) {
    return {origin_rule::by_unit,
            {origin_packet::ext_range, of_targets},
            {origin_packet::ext_range, of_hunter}};
}

} // namespace origins

} // namespace zel::toolbox::rt_range
