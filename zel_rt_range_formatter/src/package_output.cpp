#include "zel_rt_range_formatter/src/package_output.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "extensibility/format_type.hpp"
#include "zel_rt_range_formatter/records/units.hpp"
#include "zel_rt_range_formatter/src/raw_package.hpp"

namespace zel::toolbox::rt_range {

package_output::package_output(const zel_raw_package_t& raw_package,
                               extensibility::package_list& packages,
                               const zel_allocator_t* allocator)
    : raw_package_(raw_package), packages_(packages), allocator_(allocator) {}

void package_output::add_ethernet_frame(const std::uint8_t* frame, std::uint64_t frame_size) {
    constexpr const char* format_type =
        extensibility::format_type_identifier(extensibility::format_type_code::eth);
    constexpr std::size_t mac_size = 6;

    auto package = extensibility::create_package(allocator_, format_type, frame, frame_size);
    fill_header(*package);
    std::uint8_t* const copy = extensibility::package_data(package);
    // Deliberate: existing recordings contain the frames in this form.
    std::swap_ranges(copy, copy + mac_size, copy + mac_size);
    packages_.push_back(std::move(package));
}

void package_output::add_ncom(const ncom_unit_record& record, std::uint32_t unit) {
    add_record(ncom_record_tags[unit], record);
}

void package_output::add_rcom(const rcom_unit_record& record) {
    add_record(rcom_record_tag, record);
}

template <typename Record>
void package_output::add_record(std::uint32_t tag, const Record& record) {
    constexpr const char* format_type =
        extensibility::format_type_identifier(extensibility::format_type_code::rtrange);

    auto package = extensibility::create_package(allocator_, sizeof(tag) + sizeof(record));
    fill_header(*package);
    package->source_info_nibble = source_info_nibble(raw_package_);
    extensibility::assign_format_type(package, format_type);
    std::uint8_t* const data = extensibility::package_data(package);
    std::memcpy(data, &tag, sizeof(tag));
    std::memcpy(data + sizeof(tag), &record, sizeof(record));
    packages_.push_back(std::move(package));
}

/// Fills the header values of all packages; decoded records also carry the nibble.
void package_output::fill_header(zel_package_t& package) const {
    package.source_id = raw_package_.source_id;
    package.source_info = raw_package_.source_info;
    std::memcpy(package.pass_through_block, raw_package_.pass_through_block,
                sizeof(package.pass_through_block));
    package.reference_timestamp = raw_package_.reference_timestamp;
    package.reserved_48 = 0;
    package.reserved_52 = 0;
    package.reserved_54 = 0;
}

} // namespace zel::toolbox::rt_range
