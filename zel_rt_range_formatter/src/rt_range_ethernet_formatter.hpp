// Formatter of Ethernet frames with a vehicle bus header.
#pragma once

#include <memory>

#include "extensibility/formatter.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

namespace zel::toolbox::rt_range {

/// Accepts raw packages of type "zel.eth.rtrange": a 16-byte vehicle bus header, which is skipped,
/// then an Ethernet frame. The raw package's state is not checked, and all packages come
/// from the decoder.
class rt_range_ethernet_formatter final
    : public extensibility::transform::formatter<rt_range_ethernet_formatter>,
      private rt_range_formatter_base {
public:
    explicit rt_range_ethernet_formatter(std::shared_ptr<runtime::service_locator> host_services);

    void format(extensibility::package_list& packages, const zel_raw_package_t* raw_package,
                const zel_allocator_t* allocator) override;

private:
    bool process_rt_range_data(const zel_raw_package_t& raw_package,
                               extensibility::package_list& packages,
                               const zel_allocator_t* allocator);
};

} // namespace zel::toolbox::rt_range
