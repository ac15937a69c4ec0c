#include "tools/rtrange/tables/measured_fields.hpp"

#include <cmath>
#include <limits>
#include <string_view>

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// Values of a whole number above this one mean that there is none.
unsigned largest_value(const measured_column& column) {
    constexpr unsigned largest_byte = 254;
    constexpr unsigned largest_mode = 32;
    const std::string_view name = column.shown.name;
    const bool is_byte = column.stored->type == field_type::u8;
    if (name.ends_with("_mode"))
        return largest_mode;
    if (name == "satellites" || (is_byte && name.ends_with("_age")))
        return largest_byte;
    return std::numeric_limits<unsigned>::max();
}

/// In records, the smallest and the largest double mean that there is no value.
bool is_marker(double value) {
    using limits = std::numeric_limits<double>;
    return value == limits::min() || std::abs(value) == limits::max();
}

cell unknown(cell_type type) {
    return type == cell_type::address ? unknown_address : unknown_number;
}

} // namespace

std::vector<cell> unknown_cells(const std::vector<measured_column>& columns) {
    std::vector<cell> cells;
    cells.reserve(columns.size());
    for (const measured_column& column : columns)
        cells.push_back(unknown(column.shown.type));
    return cells;
}

cell whole(std::int64_t value) {
    return cell_of(static_cast<double>(value));
}

void measured_fields::copied_field::copy(record_bytes record, std::vector<cell>& cells) const {
    const cell content = field.in(record.data());
    if (type == cell_type::address) {
        cells[column] = content;
    } else if (type == cell_type::number) {
        const double value = number_in(content);
        cells[column] = std::isnan(value) || is_marker(value) ? unknown_number : content;
    } else {
        const auto value = static_cast<std::int64_t>(content);
        cells[column] = value > std::int64_t{largest} ? unknown_number : whole(value);
    }
}

measured_fields::measured_fields(const std::vector<measured_column>& columns,
                                 std::size_t record_size) {
    const auto add = [&](const copied_field& field, const packet_part& part) {
        packet_fields& fields = by_packet_[static_cast<std::size_t>(part.packet)];
        if (part.channel == packet_part::whole_packet)
            fields.with_packet.push_back(field);
        else
            fields.with_channel.at(static_cast<std::size_t>(part.channel)).push_back(field);
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto& [shown, origin, stored, of_hunter] = columns[i];
        if (stored == nullptr || origin.rule == origin_rule::both)
            continue;
        const copied_field field{i, shown.type, {*stored, record_size}, largest_value(columns[i])};
        add(field, origin.first);
        if (origin.rule == origin_rule::either)
            add(field, origin.second);
    }
}

void measured_fields::copy_packet(origin_packet packet, record_bytes record,
                                  std::vector<cell>& cells) const {
    for (const copied_field& field : by_packet_[static_cast<std::size_t>(packet)].with_packet)
        field.copy(record, cells);
}

void measured_fields::copy_channel(origin_packet packet, std::uint8_t channel, record_bytes record,
                                   std::vector<cell>& cells) const {
    const packet_fields& fields = by_packet_[static_cast<std::size_t>(packet)];
    for (const copied_field& field : fields.with_channel[channel])
        field.copy(record, cells);
}

} // namespace rtrange
