#include "tools/rtrange/report/row_streams.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {
namespace {

bool is_samples_table(std::size_t table) {
    return table < rcom_table && table % 2 == 1;
}

} // namespace

std::optional<stream_key> row_streams::stream_of(const table_row& row) {
    if (is_samples_table(row.table) || row.table == refused_table ||
        (row.table == rcom_table && !with_rcom_))
        return std::nullopt;
    return stream_key{unit_of(row), kind_of(row)};
}

/// Unidentified senders are units of their own, as long as there are few.
std::string row_streams::unit_of(const table_row& row) {
    std::string unit(table_descriptions()[row.table].unit);
    if (row.table != unidentified_table)
        return unit;
    const auto& columns = columns_[row.table];
    const auto source = std::ranges::find_if(
        columns, [](const column& entry) { return std::string_view(entry.name) == "source_ip"; });
    const auto address =
        static_cast<std::uint32_t>(row.cells[static_cast<std::size_t>(source - columns.begin())]);
    if (senders_.size() < most_named_senders)
        senders_.insert(address);
    return senders_.contains(address) ? ipv4_text(address) : unit;
}

} // namespace rtrange
