#include "tools/rtrange/tables/key_figure_collector.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {
namespace {

std::optional<std::size_t> find(const std::vector<column>& columns, std::string_view name) {
    const auto found =
        std::ranges::find_if(columns, [&](const column& entry) { return entry.name == name; });
    if (found == columns.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

bool is_packet_table(std::size_t table) {
    return table == unidentified_table || (table < rcom_table && table % 2 == 0);
}

} // namespace

key_figure_collector::key_figure_collector(const table_columns& columns) {
    for (std::size_t table = 0; table < table_count; ++table) {
        const auto time = find(columns[table], "time_s");
        if (!is_packet_table(table) || !time)
            continue;
        table_sources& sources = sources_[table];
        sources.time = *time;
        if (table == unidentified_table)
            sources.sender = find(columns[table], "source_ip");
        for (std::size_t figure = 0; figure < key_figures().size(); ++figure)
            if (const auto source = source_of(figure, columns[table]))
                (key_figures()[figure].kind == row_kind::range ? sources.of_range
                                                               : sources.of_navigation)
                    .push_back(*source);
    }
}

std::optional<key_figure_collector::figure_source>
key_figure_collector::source_of(std::size_t figure, const std::vector<column>& columns) {
    const std::string_view value = key_figures()[figure].value;
    const bool is_distance = value == "distance", is_closing_speed = value == "closing_speed";
    const auto first =
        find(columns, is_distance || is_closing_speed ? "range_longitudinal" : value);
    const auto second = is_distance        ? find(columns, "range_lateral")
                        : is_closing_speed ? find(columns, "range_rate_longitudinal")
                                           : first;
    if (!first || !second)
        return std::nullopt;
    const derivation how = is_distance        ? derivation::distance
                           : is_closing_speed ? derivation::closing_speed
                                              : derivation::none;
    return figure_source{figure, how, *first, *second};
}

double key_figure_collector::value_in(const table_row& row, const figure_source& source) {
    const double first = number_in(row.cells[source.column]);
    if (source.how == derivation::none)
        return first;
    const double second = number_in(row.cells[source.second_column]);
    return source.how == derivation::distance ? distance_of(first, second)
                                              : closing_speed_of(first, second);
}

void key_figure_collector::take(const table_row& row) {
    const table_sources& sources = sources_[row.table];
    const bool is_range = kind_of(row) == row_kind::range;
    const auto& of_kind = is_range ? sources.of_range : sources.of_navigation;
    if (of_kind.empty())
        return;
    unit_values& values = values_of(row);
    values.has_range_rows |= is_range;
    for (const figure_source& source : of_kind) {
        const double value = value_in(row, source);
        const double rank = rank_of(value, key_figures()[source.figure].which);
        best_value& best = values.best[source.figure];
        if (rank > best.rank)
            best = {rank, value, number_in(row.cells[sources.time])};
    }
}

/// Of an unidentified sender, as long as there are few, its own.
key_figure_collector::unit_values& key_figure_collector::values_of(const table_row& row) {
    unit_values* values = &by_table_[row.table];
    if (const auto sender = sources_[row.table].sender) {
        const auto address = static_cast<std::uint32_t>(row.cells[*sender]);
        if (senders_.size() < most_named_senders || senders_.contains(address))
            values = &senders_[address];
    }
    if (values->best.empty())
        values->best.resize(key_figures().size());
    return *values;
}

std::vector<unit_figures>
key_figure_collector::figures(const std::set<std::uint32_t>& identified) const {
    std::vector<unit_figures> result;
    for (std::size_t table = 0; table < table_count; ++table)
        if (table != unidentified_table)
            add(std::string(table_descriptions()[table].unit), by_table_[table], result);
    for (const auto& [address, values] : senders_)
        if (!identified.contains(address))
            add(ipv4_text(address), values, result);
    add(std::string(table_descriptions()[unidentified_table].unit), by_table_[unidentified_table],
        result);
    return result;
}

void key_figure_collector::add(const std::string& unit, const unit_values& values,
                               std::vector<unit_figures>& result) {
    unit_figures found{unit, {}};
    for (std::size_t i = 0; i < values.best.size(); ++i) {
        const key_figure& figure = key_figures()[i];
        const auto& [rank, value, time_s] = values.best[i];
        if (!std::isinf(rank))
            found.figures.push_back({&figure, value, time_s});
        else if (values.has_range_rows && figure.value == "ttc_longitudinal")
            found.figures.push_back({&figure, std::nullopt, time_s});
    }
    if (!found.figures.empty())
        result.push_back(std::move(found));
}

} // namespace rtrange
