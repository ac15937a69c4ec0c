// Formatter of recorder frames.
#pragma once

#include <memory>

#include "extensibility/enable_data_source_binding.hpp"
#include "extensibility/formatter.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

namespace zel::toolbox::rt_range {

/// Accepts raw packages of type "zel.rtrange": a 4-byte source header that holds a CRC32C, then an
/// Ethernet frame. The output is the bare frame as a "zel.eth" package, then the packages of the
/// decoder.
class rt_range_formatter final
    : public extensibility::transform::formatter<rt_range_formatter>,
      public extensibility::transform::enable_data_source_binding<rt_range_formatter>,
      private rt_range_formatter_base {
public:
    explicit rt_range_formatter(std::shared_ptr<runtime::service_locator> host_services);

    void format(extensibility::package_list& packages, const zel_raw_package_t* raw_package,
                const zel_allocator_t* allocator) override;

    /// Accepted and ignored: each raw package holds all that the decoder needs.
    void bind(const extensibility::transform::data_source& source,
              const std::shared_ptr<const zel_data_source_provider_t>& provider) override;

private:
    bool check_state(const zel_raw_package_t& raw_package) const;
    bool process_rt_range_data(const zel_raw_package_t& raw_package,
                               extensibility::package_list& packages,
                               const zel_allocator_t* allocator);

    /// Never set: the comparison of the CRC is dormant on purpose.
    bool verify_crc_ = false;
    std::shared_ptr<extensibility::log::logger> logger_;
};

} // namespace zel::toolbox::rt_range
