#include "zel_rt_range_formatter/src/rt_range_formatter.hpp"

#include <memory>
#include <string>
#include <utility>

#include "extensibility/dispatch_table.hpp"
#include "extensibility/format_type.hpp"
#include "zel_rt_range_formatter/src/dispatch_tables.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/package_output.hpp"
#include "zel_rt_range_formatter/src/raw_package.hpp"
#include "zel_rt_range_formatter/src/size_check.hpp"
#include "zelcpp/crc32c.hpp"

namespace zel::toolbox::rt_range {

zel_formatter_dispatch_table_t rt_range_formatter_dispatch_table =
    extensibility::transform::dispatch_table<rt_range_formatter>(
        extensibility::format_type_code::rtrange);

namespace {

namespace log = extensibility::log;

constexpr std::uint64_t source_header_size = 4;

constexpr const char* format_function = "zel::toolbox::rt_range::rt_range_formatter::format";
constexpr const char* process_function =
    "zel::toolbox::rt_range::rt_range_formatter::process_rt_range_data";

/// Result of the host's state check of a raw package.
struct package_state {
    bool good;
    std::string message;
};

package_state state_of(const zel_raw_package_t& raw_package) {
    zel_error_details_t* error = nullptr;
    zel_raw_package_check_state_value(raw_package.state_value, raw_package.source_id,
                                      source_info_nibble(raw_package), &error);
    if (error == nullptr)
        return {true, {}};
    const std::unique_ptr<zel_error_details_t, decltype(&zel_error_details_destroy)> owner(
        error, &zel_error_details_destroy);
    const char* const description = zel_error_details_get_description(error);
    return {zel_error_details_get_code(error) == 0, description != nullptr ? description : ""};
}

} // namespace

rt_range_formatter::rt_range_formatter(std::shared_ptr<runtime::service_locator> host_services)
    : formatter(std::move(host_services)),
      enable_data_source_binding(static_cast<extensibility::enable_service_locator&>(*this)),
      rt_range_formatter_base(host_log()) {
    reset();
    logger_ = host_log();
}

void rt_range_formatter::format(extensibility::package_list& packages,
                                const zel_raw_package_t* raw_package,
                                const zel_allocator_t* allocator) {
    runtime::check_argument(raw_package, "raw_package");
    runtime::check_argument(allocator, "allocator");
    if (check_state(*raw_package))
        process_rt_range_data(*raw_package, packages, allocator);
}

void rt_range_formatter::bind(const extensibility::transform::data_source&,
                              const std::shared_ptr<const zel_data_source_provider_t>&) {}

bool rt_range_formatter::check_state(const zel_raw_package_t& raw_package) const {
    const package_state state = state_of(raw_package);
    if (!state.message.empty()) {
        // Deliberate: the host's own text is the format string. This is the only format string
        // that is not a constant.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#endif
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(format_function),
                   state.message.c_str());
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    }
    if (!state.good)
        log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(format_function),
                   "Package state error.");
    return state.good;
}

bool rt_range_formatter::process_rt_range_data(const zel_raw_package_t& raw_package,
                                               extensibility::package_list& packages,
                                               const zel_allocator_t* allocator) {
    const std::uint64_t size = raw_package.size;
    const std::uint8_t* const data = data_of(raw_package);
    if (!has_size(logger_, log::here(process_function), "RT-range source header frame size",
                  source_header_size, size))
        return false;
    const std::uint8_t* const frame = data + source_header_size;
    const std::uint64_t frame_size = size - source_header_size;
    const std::uint32_t stored_crc = read_unsigned(data, source_header_size);
    if (stored_crc == 0) {
        log::write(logger_, ZEL_LOG_LEVEL_SKIPPED, log::here(process_function),
                   "Detected corrupted CRC!");
        return false;
    }
    if (verify_crc_) { // Unreachable: nothing sets verify_crc_.
        const std::uint32_t crc = utility::crc32c::checksum(frame, frame_size, 0xFFFFFFFF);
        if (crc != stored_crc) {
            log::write(logger_, ZEL_LOG_LEVEL_MALFORMED, log::here(process_function),
                       "CRC verification failed on RT-Range frame(Calculated CRC = %u, Original "
                       "CRC = %u). Data frame will be dropped.",
                       static_cast<unsigned>(crc), static_cast<unsigned>(stored_crc));
            return false;
        }
    }
    if (!has_size(logger_, log::here(process_function), "Ethernet frame size", ethernet_header_size,
                  frame_size))
        return false;
    package_output output(raw_package, packages, allocator);
    output.add_ethernet_frame(frame, frame_size);
    return rt_range_formatter_base::process_rt_range_data(frame, frame_size, output);
}

} // namespace zel::toolbox::rt_range
