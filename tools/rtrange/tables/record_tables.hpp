// The tables of a run.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "zel_rt_range_formatter/records/field.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

/// One table: the packets of a unit, its samples, or RCOM.
struct record_table {
    std::string_view name;        ///< for example "target1_samples"
    std::string_view unit;        ///< name for --units, for example "target1"
    std::string_view description; ///< what a row is
    bool has_source; ///< whether rows say if they come from the unit's own NCOM or from RCOM
};

inline constexpr std::size_t record_table_count = 2 * zel::toolbox::rt_range::unit_count + 1;

/// Index of the table of RCOM records.
inline constexpr std::size_t rcom_table = record_table_count - 1;

/// Index of the table of a unit's packets. The table of its samples has the next index.
constexpr std::size_t packet_table(std::size_t unit) {
    return 2 * unit;
}

/// All tables: for each unit its packets, then its samples; RCOM last.
const std::array<record_table, record_table_count>& record_tables();

/// The fields of the records in a table.
std::span<const zel::toolbox::rt_range::field> fields_of(std::size_t table);

/// The size in bytes of the records in a table.
std::size_t record_size(std::size_t table);

} // namespace rtrange
