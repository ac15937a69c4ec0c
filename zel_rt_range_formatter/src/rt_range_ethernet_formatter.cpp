#include "zel_rt_range_formatter/src/rt_range_ethernet_formatter.hpp"

#include <cstdint>
#include <utility>

#include "extensibility/dispatch_table.hpp"
#include "extensibility/format_type.hpp"
#include "zel_rt_range_formatter/src/dispatch_tables.hpp"
#include "zel_rt_range_formatter/src/package_output.hpp"
#include "zel_rt_range_formatter/src/raw_package.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"

namespace zel::toolbox::rt_range {

zel_formatter_dispatch_table_t rt_range_ethernet_formatter_dispatch_table =
    extensibility::transform::dispatch_table<rt_range_ethernet_formatter>(
        extensibility::format_type_code::eth_rtrange);

namespace {

namespace log = extensibility::log;

constexpr std::uint64_t vehicle_bus_header_size = 16;

constexpr const char* process_function =
    "zel::toolbox::rt_range::rt_range_ethernet_formatter::process_rt_range_data";

} // namespace

rt_range_ethernet_formatter::rt_range_ethernet_formatter(
    std::shared_ptr<runtime::service_locator> host_services)
    : formatter(std::move(host_services)), rt_range_formatter_base(host_log()) {
    reset();
}

void rt_range_ethernet_formatter::format(extensibility::package_list& packages,
                                         const zel_raw_package_t* raw_package,
                                         const zel_allocator_t* allocator) {
    runtime::check_argument(raw_package, "raw_package");
    runtime::check_argument(allocator, "allocator");
    process_rt_range_data(*raw_package, packages, allocator);
}

bool rt_range_ethernet_formatter::process_rt_range_data(const zel_raw_package_t& raw_package,
                                                        extensibility::package_list& packages,
                                                        const zel_allocator_t* allocator) {
    const std::uint64_t size = raw_package.size;
    if (!has_size(host_log(), log::here(process_function), "Vehicle bus header",
                  vehicle_bus_header_size, size))
        return false;
    const std::uint8_t* const frame = data_of(raw_package) + vehicle_bus_header_size;
    const std::uint64_t frame_size = size - vehicle_bus_header_size;
    if (!has_size(host_log(), log::here(process_function), "Ethernet frame size",
                  ethernet_header_size, frame_size))
        return false;
    package_output output(raw_package, packages, allocator);
    return rt_range_formatter_base::process_rt_range_data(frame, frame_size, output);
}

} // namespace zel::toolbox::rt_range
