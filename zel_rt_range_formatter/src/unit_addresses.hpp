// The IPv4 addresses of the hunter and the targets.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "zel_rt_range_formatter/records/units.hpp"

namespace zel::toolbox::rt_range {

/// Learns addresses from RCOM and tells which unit an address belongs to. Addresses are kept as
/// they stand on the wire; 0 is not yet learnt.
class unit_addresses {
public:
    /// The unit that sends NCOM from this address; the hunter for an address that belongs to no
    /// unit. While an address is not learnt, 0.0.0.0 matches it.
    std::uint32_t sender(std::uint32_t source_ip) const;

    /// The unit named by the 8 bytes of a wrapped NCOM packet that begin with its address. The four
    /// bytes after the address must be zero for a match. Targets are compared first.
    std::optional<std::uint32_t> wrapped_sender(const std::uint8_t* address) const;

    /// Takes the hunter's address unless it is known. True when it was not.
    bool learn_hunter(std::uint32_t ip);

    /// Takes the address of target 1 to 4. True when it differs from the known one.
    bool learn_target(std::uint32_t target, std::uint32_t ip);

private:
    std::uint32_t hunter_ip_ = 0;
    std::array<std::uint32_t, target_count> target_ips_{};
};

} // namespace zel::toolbox::rt_range
