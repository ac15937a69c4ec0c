#include "zel_rt_range_formatter/src/unit_addresses.hpp"

#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {

std::uint32_t unit_addresses::sender(std::uint32_t source_ip) const {
    if (source_ip == hunter_ip_)
        return hunter;
    for (std::uint32_t target = 1; target <= target_count; ++target)
        if (source_ip == target_ips_[target - 1])
            return target;
    return hunter;
}

std::uint32_t unit_addresses::wrapped_sender(const std::uint8_t* address) const {
    const auto wide = load<std::uint64_t>(address);
    for (std::uint32_t target = 1; target <= target_count; ++target)
        if (wide == target_ips_[target - 1])
            return target;
    if (wide == hunter_ip_)
        return hunter;
    return no_unit;
}

bool unit_addresses::learn_hunter(std::uint32_t ip) {
    if (hunter_ip_ != 0)
        return false;
    hunter_ip_ = ip;
    return true;
}

bool unit_addresses::learn_target(std::uint32_t target, std::uint32_t ip) {
    std::uint32_t& known = target_ips_[target - 1];
    if (known == ip)
        return false;
    known = ip;
    return true;
}

} // namespace zel::toolbox::rt_range
