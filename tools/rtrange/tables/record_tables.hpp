// The tables that decoded packages are sorted into.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "zel_rt_range_formatter/records/field.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

/// One table: packets or samples of a unit, or RCOM.
struct record_table {
    std::string_view name;        ///< for example "target1_samples"
    std::string_view unit;        ///< what users select it by, for example "target1"
    std::string_view description; ///< what a row is
    /// Whether rows tell if they come from an NCOM packet of the unit's own or from RCOM.
    bool has_source;
};

inline constexpr std::size_t record_table_count = 2 * zel::toolbox::rt_range::unit_count + 1;

/// Index of the table of RCOM records.
inline constexpr std::size_t rcom_table = record_table_count - 1;

/// Index of the table of a unit's packets; that of its samples follows.
constexpr std::size_t packet_table(std::size_t unit) {
    return 2 * unit;
}

/// All tables: per unit its packets, then its samples; then RCOM.
const std::array<record_table, record_table_count>& record_tables();

/// The fields of a table's records.
std::span<const zel::toolbox::rt_range::field> fields_of(std::size_t table);

/// The size of a table's records in bytes.
std::size_t record_size(std::size_t table);

} // namespace rtrange
