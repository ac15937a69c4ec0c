#include "zel_rt_range_formatter/src/rt_range_formatter.hpp"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "extensibility/dispatch_table.hpp"
#include "extensibility/format_type.hpp"
#include "zel/utility/crc32c.hpp"
#include "zel_rt_range_formatter/src/dispatch_tables.hpp"
#include "zel_rt_range_formatter/src/field_readers.hpp"

namespace zel::toolbox::rt_range {

zel_formatter_dispatch_table_t rt_range_formatter_dispatch_table =
    extensibility::transform::dispatch_table<rt_range_formatter>(
        extensibility::format_type_code::rtrange);

namespace {

namespace log = extensibility::log;
namespace level = extensibility::log::level;

constexpr std::uint64_t source_header_size = 4;
constexpr std::size_t mac_size = 6;

constexpr const char* format_function = "zel::toolbox::rt_range::rt_range_formatter::format";
constexpr const char* process_function =
    "zel::toolbox::rt_range::rt_range_formatter::process_rt_range_data";

/// The host's verdict on a raw package.
struct state_verdict {
    bool good;
    std::string message;
};

state_verdict ask_host(const zel_raw_package_t& raw_package) {
    zel_error_details_t* error = nullptr;
    zel_raw_package_check_state_value(raw_package.state_value, raw_package.source_id,
                                      source_info_nibble(raw_package.source_info), &error);
    if (error == nullptr)
        return {true, {}};
    const std::unique_ptr<zel_error_details_t, decltype(&zel_error_details_destroy)> owner(
        error, &zel_error_details_destroy);
    const char* const description = zel_error_details_get_description(error);
    return {zel_error_details_get_code(error) == 0, description != nullptr ? description : ""};
}

/// Appends the bare frame as a "zel.eth" package. Its two MAC addresses change places there, as
/// consumers of these packages expect.
void create_ethernet_package(const std::uint8_t* frame, std::uint64_t frame_size,
                             const pass_through& values) {
    constexpr const char* format_type =
        extensibility::format_type_identifier(extensibility::format_type_code::eth);
    auto package =
        extensibility::create_package_with_data(values.allocator, format_type, frame, frame_size);
    fill_header(*package, values);
    std::uint8_t* const copy = extensibility::package_data(package);
    std::swap_ranges(copy, copy + mac_size, copy + mac_size);
    values.packages.push_back(std::move(package));
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
    const state_verdict verdict = ask_host(raw_package);
    if (!verdict.message.empty()) {
        // The host's own text is the format, so that it can be written with "%%" as hosts do; this
        // is the one place where a text that is no constant is trusted so far.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#endif
        log::write(logger_, level::malformed, log::here(format_function), verdict.message.c_str());
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    }
    if (!verdict.good)
        log::write(logger_, level::malformed, log::here(format_function), "Package state error.");
    return verdict.good;
}

bool rt_range_formatter::process_rt_range_data(const zel_raw_package_t& raw_package,
                                               extensibility::package_list& packages,
                                               const zel_allocator_t* allocator) {
    const std::uint64_t size = raw_package.size;
    const auto* const data =
        reinterpret_cast<const std::uint8_t*>(&raw_package) + sizeof(raw_package);
    if (size < source_header_size) {
        log::write(logger_, level::malformed, log::here(process_function),
                   "Unexpected RT-range source header frame size (Expected at least = %u, Received "
                   "size = %u).",
                   static_cast<unsigned>(source_header_size), static_cast<unsigned>(size));
        return false;
    }
    const std::uint8_t* const frame = data + source_header_size;
    const std::uint64_t frame_size = size - source_header_size;
    const std::uint32_t stored_crc = read_unsigned(data, source_header_size);
    if (stored_crc == 0) {
        log::write(logger_, level::skipped, log::here(process_function), "Detected corrupted CRC!");
        return false;
    }
    if (verify_crc_) {
        const std::uint32_t crc = utility::crc32c::checksum(frame, frame_size, 0xFFFFFFFF);
        if (crc != stored_crc) {
            log::write(logger_, level::malformed, log::here(process_function),
                       "CRC verification failed on RT-Range frame(Calculated CRC = %u, Original "
                       "CRC = %u). Data frame will be dropped.",
                       static_cast<unsigned>(crc), static_cast<unsigned>(stored_crc));
            return false;
        }
    }
    if (frame_size < ethernet_header_size) {
        log::write(logger_, level::malformed, log::here(process_function),
                   "Unexpected Ethernet frame size (Expected at least = %u, Received size = %u).",
                   static_cast<unsigned>(ethernet_header_size), static_cast<unsigned>(frame_size));
        return false;
    }
    const pass_through values = pass_through_of(raw_package, packages, allocator);
    create_ethernet_package(frame, frame_size, values);
    return rt_range_formatter_base::process_rt_range_data(frame, frame_size, values);
}

} // namespace zel::toolbox::rt_range
