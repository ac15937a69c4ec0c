// Fields of records that the view "measured" shows, by what brings them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/rtrange/tables/decoded_packages.hpp"
#include "tools/rtrange/tables/measured_columns.hpp"
#include "tools/rtrange/tables/stored_fields.hpp"

namespace rtrange {

/// Cells for all columns, with unknown values.
std::vector<cell> unknown_cells(const std::vector<measured_column>& columns);

/// The content of a cell of type whole_number.
cell whole(std::int64_t value);

/// Copies values from a record into the cells of its columns when a packet or status channel has
/// brought them. Values that the wire marks as invalid become unknown.
class measured_fields {
public:
    measured_fields() = default;
    measured_fields(const std::vector<measured_column>& columns, std::size_t record_size);

    /// Copies the values that every packet of a kind brings.
    void copy_packet(zel::toolbox::rt_range::origin_packet packet, record_bytes record,
                     std::vector<cell>& cells) const;

    /// Copies the values that one of its status channels brings.
    void copy_channel(zel::toolbox::rt_range::origin_packet packet, std::uint8_t channel,
                      record_bytes record, std::vector<cell>& cells) const;

private:
    struct copied_field {
        void copy(record_bytes record, std::vector<cell>& cells) const;

        std::size_t column;
        cell_type type;
        stored_field field;
        unsigned largest; ///< of a whole number: larger values are reserved and mean none
    };
    struct packet_fields {
        std::vector<copied_field> with_packet;
        std::array<std::vector<copied_field>, 256> with_channel;
    };

    std::array<packet_fields, 6> by_packet_; ///< by origin_packet
};

} // namespace rtrange
