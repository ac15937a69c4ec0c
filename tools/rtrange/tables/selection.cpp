#include "tools/rtrange/tables/selection.hpp"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/tables/measured_columns.hpp"
#include "tools/rtrange/tables/table.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// Number of characters to insert, delete or replace to turn one name into the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// Empty if the list contains the name; otherwise a message that suggests the nearest name.
std::string fault_of_name(std::string_view kind, std::string_view name,
                          const std::vector<std::string_view>& names) {
    if (std::ranges::find(names, name) != names.end())
        return {};
    const auto nearest = std::ranges::min_element(
        names, {}, [&](std::string_view other) { return distance(name, other); });
    return fmt::format("there is no {} '{}'; the nearest name is '{}'", kind, name, *nearest);
}

} // namespace

std::string fault_of_field(const std::string& name) {
    if (name == "reference_timestamp" || name == "time_s" || name == "packet" || name == "source")
        return fmt::format("'{}' is always written and cannot be selected", name);
    std::vector<std::string_view> all;
    for (const std::span<const field> fields : {ncom_fields(), rcom_fields()})
        for (const field& entry : fields)
            all.emplace_back(entry.name);
    for (const auto* const columns : {&measured_unit_columns(), &measured_rcom_columns()})
        for (const measured_column& entry : *columns)
            all.emplace_back(entry.shown.name);
    return fault_of_name("field", name, all);
}

std::string fault_of_unit(const std::string& name) {
    std::vector<std::string_view> all;
    for (const table_description& table : table_descriptions())
        if (!table.unit.empty())
            all.push_back(table.unit);
    return fault_of_name("unit", name, all);
}

std::string fault_of_time(const std::string& text) {
    if (parse_time(text))
        return {};
    return fmt::format("'{}' is not a time; give seconds since the first frame, such as 12.5, or "
                       "UTC, such as 2026-01-05T10:00:12.5",
                       text);
}

selection::selection(const selection_options& options) : units_(options.units) {
    for (const auto* const names : {&options.fields, &options.also_fields})
        for (const std::string& name : *names)
            if (!options.fields.empty() && std::ranges::find(fields_, name) == fields_.end())
                fields_.push_back(name);
    if (!options.from.empty())
        from_ = parse_time(options.from).value();
    if (!options.to.empty())
        to_ = parse_time(options.to).value();
    if (from_.since_start == to_.since_start && from_.time_ns >= to_.time_ns)
        throw usage_failure("--from must be before --to");
}

bool selection::has_unit(std::string_view unit) const {
    return unit.empty() || units_.empty() || std::ranges::find(units_, unit) != units_.end();
}

void selection::set_start(std::uint64_t time_ns) {
    from_ns_ = from_.time_ns + (from_.since_start ? time_ns : 0);
    to_ns_ = to_.time_ns + (to_.since_start ? time_ns : 0);
}

} // namespace rtrange
