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

std::string lower_case(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return result;
}

/// The name that differs in case only; else the first few that begin with the given one; else those
/// that contain it; else the one with the smallest distance. Ignores case.
std::vector<std::string_view> nearest_names(std::string_view given,
                                            const std::vector<std::string_view>& names) {
    constexpr std::size_t most = 4;
    const std::string wanted = lower_case(given);
    std::vector<std::string_view> beginning, containing;
    for (const std::string_view name : names) {
        if (lower_case(name) == wanted)
            return {name};
        const std::size_t at = wanted.empty() ? std::string::npos : lower_case(name).find(wanted);
        auto& list = at == 0 ? beginning : containing;
        if (at != std::string::npos && list.size() < most &&
            std::ranges::find(list, name) == list.end())
            list.push_back(name);
    }
    if (!beginning.empty())
        return beginning;
    if (!containing.empty())
        return containing;
    return {*std::ranges::min_element(
        names, {}, [&](std::string_view name) { return distance(wanted, lower_case(name)); })};
}

/// Empty if the list contains the name; otherwise a message that suggests the nearest names.
std::string fault_of_name(std::string_view kind, std::string_view name,
                          const std::vector<std::string_view>& names) {
    if (std::ranges::find(names, name) != names.end())
        return {};
    const auto nearest = nearest_names(name, names);
    return fmt::format("there is no {} '{}'; the nearest name{} '{}'", kind, name,
                       nearest.size() == 1 ? " is" : "s are", fmt::join(nearest, "', '"));
}

/// Whether a column stands at the beginning of tables, whatever is selected.
bool is_always_written(std::string_view name) {
    return name == "reference_timestamp" || name == "time_s" || name == "packet" ||
           name == "source";
}

} // namespace

std::vector<std::string_view> selectable_fields() {
    std::vector<std::string_view> all;
    const auto add = [&all](const std::string_view name) {
        if (!is_always_written(name) && std::ranges::find(all, name) == all.end())
            all.push_back(name);
    };
    for (const std::span<const field> fields : {ncom_fields(), rcom_fields()})
        for (const field& entry : fields)
            add(entry.name);
    for (const auto* const columns : {&measured_unit_columns(), &measured_rcom_columns()})
        for (const measured_column& entry : *columns)
            add(entry.shown.name);
    return all;
}

std::vector<std::string_view> selectable_units() {
    std::vector<std::string_view> all;
    for (const table_description& table : table_descriptions())
        if (!table.unit.empty() && std::ranges::find(all, table.unit) == all.end())
            all.push_back(table.unit);
    return all;
}

std::string fault_of_field(const std::string& name) {
    if (is_always_written(name))
        return fmt::format("'{}' is always written and cannot be selected", name);
    const std::string fault = fault_of_name("field", name, selectable_fields());
    return fault.empty() ? fault : fault + "; see 'rtrange fields'";
}

std::string fault_of_unit(const std::string& name) {
    return fault_of_name("unit", name, selectable_units());
}

std::string fault_of_time(const std::string& text) {
    if (parse_time(text))
        return {};
    return fmt::format(
        "'{}' is not a valid time; give seconds since the first frame, such as 12.5, "
        "minutes and seconds, such as 1:30, or UTC, such as 2026-01-05T10:00:12.5",
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
