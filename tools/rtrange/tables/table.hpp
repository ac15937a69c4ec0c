// The tables of a run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "tools/rtrange/tables/column.hpp"
#include "tools/rtrange/tables/received_packet.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

/// What a table of any view is about.
struct table_description {
    std::string_view name; ///< for example "target1_samples"
    std::string_view unit; ///< name for --units, for example "target1"; empty if there is none
    std::string_view text; ///< what a row is
};

inline constexpr std::size_t table_count = 2 * zel::toolbox::rt_range::unit_count + 3;

/// Indices of tables. The samples of a unit have the index after that of its packets.
constexpr std::size_t packet_table(std::size_t unit) {
    return 2 * unit;
}
constexpr std::size_t samples_table(std::size_t unit) {
    return 2 * unit + 1;
}
inline constexpr std::size_t rcom_table = 2 * zel::toolbox::rt_range::unit_count;
inline constexpr std::size_t unidentified_table = rcom_table + 1;
inline constexpr std::size_t refused_table = rcom_table + 2;

/// Reports and summaries tell this many unidentified senders apart; a capture may contain any
/// number.
inline constexpr std::size_t most_named_senders = 8;

/// All tables: for each unit its packets, then its samples; RCOM; unidentified senders; refused
/// frames.
const std::array<table_description, table_count>& table_descriptions();

/// The columns of all tables in a view. A table without columns is not written.
using table_columns = std::array<std::vector<column>, table_count>;

/// One row. The cells are valid until the view makes the next rows.
struct table_row {
    std::size_t table;
    std::uint64_t reference_timestamp; ///< nanoseconds since 1970
    packet_kind packet;                ///< kind of the packet that the row comes from
    std::span<const cell> cells;       ///< one per column of the table
};

} // namespace rtrange
