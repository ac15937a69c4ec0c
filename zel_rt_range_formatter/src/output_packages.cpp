#include "zel_rt_range_formatter/src/output_packages.hpp"

#include <cstring>
#include <utility>

#include "extensibility/format_type.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace zel::toolbox::rt_range {
namespace {

template <typename Record>
void create_record_package(std::uint32_t tag, const Record& record, const pass_through& values) {
    constexpr const char* format_type =
        extensibility::format_type_identifier(extensibility::format_type_code::rtrange);
    auto package =
        extensibility::create_package(values.allocator, format_type, sizeof(tag) + sizeof(record));
    fill_header(*package, values);
    package->source_info_nibble = values.source_info_nibble;
    std::uint8_t* const data = extensibility::package_data(package);
    std::memcpy(data, &tag, sizeof(tag));
    std::memcpy(data + sizeof(tag), &record, sizeof(record));
    values.packages.push_back(std::move(package));
}

} // namespace

void create_ncom_package(const ncom_unit_record& record, std::uint32_t unit,
                         const pass_through& values) {
    create_record_package(ncom_record_tags[unit], record, values);
}

void create_rcom_package(const rcom_unit_record& record, const pass_through& values) {
    create_record_package(rcom_record_tag, record, values);
}

} // namespace zel::toolbox::rt_range
