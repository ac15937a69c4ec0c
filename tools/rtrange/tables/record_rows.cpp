#include "tools/rtrange/tables/record_rows.hpp"

#include <algorithm>
#include <cstring>
#include <optional>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/tables/record_tables.hpp"
#include "zel/format_type.h"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

struct decoded_package {
    std::uint32_t tag;
    std::span<const std::uint8_t> record;
};

/// The tag and the record of a decoded package; nothing for a package that holds an Ethernet frame.
std::optional<decoded_package> decoded(const zel_package_t& package) {
    const auto data = zel::host::data(package);
    decoded_package result{};
    if (zel::host::format_type(package) != ZEL_FORMAT_TYPE_RTRANGE ||
        data.size() < sizeof(result.tag))
        return std::nullopt;
    std::memcpy(&result.tag, data.data(), sizeof(result.tag));
    result.record = data.subspan(sizeof(result.tag));
    return result;
}

void require_size(std::span<const std::uint8_t> record, std::size_t size) {
    if (record.size() != size)
        throw failure(fmt::format("the plug-in returned a record of {} bytes, not {}; use the "
                                  "plug-in installed with this program",
                                  record.size(), size));
}

/// Index of the unit whose NCOM record has this tag.
std::optional<std::size_t> unit_with_tag(std::uint32_t tag) {
    const auto found = std::ranges::find(ncom_record_tags, tag);
    if (found == ncom_record_tags.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - ncom_record_tags.begin());
}

} // namespace

void rows_of(const zel::host::package_array& packages, std::vector<record_row>& rows) {
    rows.clear();
    bool from_rcom = false;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const auto package = decoded(packages[i]);
        if (!package)
            continue;
        const std::uint64_t timestamp = packages[i].reference_timestamp;
        if (package->tag == rcom_record_tag) {
            require_size(package->record, sizeof(rcom_unit_record));
            rows.push_back({rcom_table, timestamp, {}, package->record});
            from_rcom = true;
        } else if (const auto unit = unit_with_tag(package->tag)) {
            require_size(package->record, sizeof(ncom_unit_record));
            // The packages of a sample batch precede that of the packet that completed it.
            const bool sample = i + 1 < packages.size();
            rows.push_back({packet_table(*unit) + sample, timestamp, "ncom", package->record});
        }
    }
    if (!from_rcom)
        return;
    for (record_row& row : rows)
        if (record_tables()[row.table].has_source)
            row.source = "rcom";
}

} // namespace rtrange
