#include "zel_rt_range_formatter/src/pass_through.hpp"

#include <cstring>

namespace zel::toolbox::rt_range {

pass_through pass_through_of(const zel_raw_package_t& raw_package,
                             extensibility::package_list& packages,
                             const zel_allocator_t* allocator) {
    pass_through values{raw_package.source_id,
                        raw_package.source_info,
                        source_info_nibble(raw_package.source_info),
                        {},
                        raw_package.reference_timestamp,
                        packages,
                        allocator};
    std::memcpy(values.pass_through_block.data(), raw_package.pass_through_block,
                values.pass_through_block.size());
    return values;
}

void fill_header(zel_package_t& package, const pass_through& values) {
    package.source_id = values.source_id;
    package.source_info = values.source_info;
    std::memcpy(package.pass_through_block, values.pass_through_block.data(),
                values.pass_through_block.size());
    package.reference_timestamp = values.reference_timestamp;
    package.reserved_48 = 0;
    package.reserved_52 = 0;
    package.reserved_54 = 0;
}

} // namespace zel::toolbox::rt_range
