#include "zel_rt_range_formatter/records/field_origin.hpp"

namespace zel::toolbox::rt_range {
namespace {

std::string name_of(origin_packet packet) {
    switch (packet) {
    case origin_packet::none:
        break; // Unreachable, as is the return at the end: every part used by a rule has a packet.
    case origin_packet::ncom:
        return "NCOM";
    case origin_packet::hunter_ncom:
        return "NCOM of the hunter";
    case origin_packet::ext_range:
        return "extended range";
    case origin_packet::lane:
        return "lane";
    case origin_packet::rcom:
        return "RCOM";
    }
    return "";
}

std::string name_of(const packet_part& part) {
    const std::string packet = name_of(part.packet);
    return part.channel == packet_part::whole_packet
               ? packet
               : packet + " channel " + std::to_string(part.channel);
}

} // namespace

std::string text_of(const field_origin& origin) {
    switch (origin.rule) { // Unreachable without a matching case: each rule has one.
    case origin_rule::never:
        break;
    case origin_rule::first:
        return name_of(origin.first);
    case origin_rule::either:
        return name_of(origin.first) + " or " + name_of(origin.second);
    case origin_rule::both:
        return name_of(origin.first) + " and " + name_of(origin.second);
    case origin_rule::by_unit:
        return name_of(origin.first) + " (targets) or " + std::to_string(origin.second.channel) +
               " (hunter)";
    }
    return "nothing";
}

} // namespace zel::toolbox::rt_range
