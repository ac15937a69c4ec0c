#include "tools/rtrange/tables/selection.hpp"

#include <algorithm>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/names.hpp"
#include "tools/rtrange/tables/measured_columns.hpp"
#include "tools/rtrange/tables/table.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// Whether a column stands at the beginning of tables, whatever is selected.
bool is_always_written(std::string_view name) {
    return name == "reference_timestamp" || name == "time_s" || name == "packet" ||
           name == "source";
}

std::vector<std::string_view> make_selectable_fields() {
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

std::vector<std::string_view> make_selectable_units() {
    std::vector<std::string_view> all;
    for (const table_description& table : table_descriptions())
        if (!table.unit.empty() && std::ranges::find(all, table.unit) == all.end())
            all.push_back(table.unit);
    return all;
}

} // namespace

const std::vector<std::string_view>& selectable_fields() {
    static const std::vector<std::string_view> all = make_selectable_fields();
    return all;
}

const std::vector<std::string_view>& selectable_units() {
    static const std::vector<std::string_view> all = make_selectable_units();
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
