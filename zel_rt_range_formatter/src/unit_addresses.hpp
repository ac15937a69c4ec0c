// The IPv4 addresses of the hunter and the targets.
#pragma once

#include <array>
#include <cstdint>

#include "zel_rt_range_formatter/records/units.hpp"

namespace zel::toolbox::rt_range {

/// Learns the addresses from RCOM and finds the unit of an address. Addresses are in wire byte
/// order; 0 stands for an address that has not been learnt.
class unit_addresses {
public:
    /// The unit that sends NCOM from this address; the hunter for an address of no unit. 0.0.0.0
    /// matches a unit whose address has not been learnt.
    std::uint32_t sender(std::uint32_t source_ip) const;

    /// The unit named by the 8 bytes at `address` in a wrapped NCOM packet. Deliberate: the last
    /// four must be zero for a match. Targets are compared before the hunter. `no_unit` if none
    /// matches.
    std::uint32_t wrapped_sender(const std::uint8_t* address) const;

    /// Stores the hunter's address unless it is known already. True if it was not.
    bool learn_hunter(std::uint32_t ip);

    /// Stores the address of target 1 to 4. True if it differs from the stored one.
    bool learn_target(std::uint32_t target, std::uint32_t ip);

private:
    std::uint32_t hunter_ip_ = 0;
    std::array<std::uint32_t, target_count> target_ips_{};
};

} // namespace zel::toolbox::rt_range
