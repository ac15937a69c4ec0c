#include "tools/rtrange/tables/decoded_packages.hpp"

#include <algorithm>
#include <cstring>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "zel/format_type.h"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

record_bytes record_of_size(record_bytes record, std::size_t size) {
    if (record.size() != size)
        throw failure(fmt::format("the plug-in returned a record of {} bytes, not {}; use the "
                                  "plug-in installed with this program",
                                  record.size(), size));
    return record;
}

} // namespace

void sort_packages(const zel::host::package_array& packages, decoded_packages& decoded) {
    decoded.samples.clear();
    decoded.rcom.reset();
    decoded.packet.reset();
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const record_bytes data = zel::host::data(packages[i]);
        std::uint32_t tag = 0;
        if (zel::host::format_type(packages[i]) != ZEL_FORMAT_TYPE_RTRANGE ||
            data.size() < sizeof(tag))
            continue; // an Ethernet frame
        std::memcpy(&tag, data.data(), sizeof(tag));
        const record_bytes record = data.subspan(sizeof(tag));
        if (tag == rcom_record_tag) {
            decoded.rcom = record_of_size(record, sizeof(rcom_unit_record));
            continue;
        }
        const auto found = std::ranges::find(ncom_record_tags, tag);
        if (found == ncom_record_tags.end())
            continue;
        const unit_record row{static_cast<std::size_t>(found - ncom_record_tags.begin()),
                              record_of_size(record, sizeof(ncom_unit_record))};
        // The packages of a sample batch precede that of the packet that completed it.
        if (i + 1 < packages.size())
            decoded.samples.push_back(row);
        else
            decoded.packet = row;
    }
}

} // namespace rtrange
