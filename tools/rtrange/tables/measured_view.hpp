// What packets have measured.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/rtrange/tables/measured_columns.hpp"
#include "tools/rtrange/tables/measured_values.hpp"
#include "tools/rtrange/tables/selection.hpp"
#include "tools/rtrange/tables/stored_fields.hpp"
#include "tools/rtrange/tables/table_view.hpp"

namespace rtrange {

/// Rows that a person may rely on. A value is unknown until a packet of the row's own unit has
/// brought it. Headings and velocities come from the packet, without the record's filter. NCOM from
/// an address that is no unit's has a table of its own.
class measured_view final : public table_view {
public:
    /// `with_samples` adds the tables of the sample batches.
    measured_view(const selection& selected, bool with_samples);

    const table_columns& columns() const override { return columns_; }
    std::optional<std::size_t> unit_table(const decoded_frame& frame) const override;
    void add_rows(const decoded_frame& frame, std::vector<table_row>& rows) override;
    void restart() override;
    std::vector<std::string> notes() const override;

private:
    /// A field to copy from a record when a packet or status channel has come.
    struct copied_field {
        void copy(record_bytes record, std::vector<cell>& cells) const;

        std::size_t column;
        cell_type type;
        stored_field field;
        unsigned largest; ///< of a whole number: larger values are reserved and mean none
    };
    struct copied_fields {
        void copy(std::uint8_t channel, record_bytes record, std::vector<cell>& cells) const;

        std::vector<copied_field> with_packet;
        std::array<std::vector<copied_field>, 256> with_channel;
    };
    using fields_by_packet = std::array<copied_fields, 6>; ///< by origin_packet

    /// What the NCOM packets of one sender have brought, and RCOM of a target's position.
    struct sender_state {
        std::vector<cell> cells; ///< by column of a unit's table
        gps_clock clock;
        std::optional<measured_motion> motion;
    };
    struct unit_state {
        std::optional<std::uint32_t> address;
        sender_state unaddressed; ///< stands in for the sender until the address is known
        std::vector<cell> cells;  ///< what extended range packets have brought, by column
    };
    struct unidentified_sender {
        std::uint64_t rows;
        std::uint64_t last_time_ns;
    };

    static fields_by_packet sorted_fields(const std::vector<measured_column>& columns,
                                          std::size_t record_size);
    static const copied_fields& fields_of(const fields_by_packet& fields,
                                          zel::toolbox::rt_range::origin_packet packet) {
        return fields[static_cast<std::size_t>(packet)];
    }
    void learn_addresses(const known_addresses& addresses);
    sender_state& sender(std::uint32_t address);
    sender_state& sender_of(std::size_t unit);
    void take_ncom(const decoded_frame& frame);
    void take_packet(sender_state& sender, const received_packet& packet);
    void take_channel(sender_state& sender, std::uint8_t channel, record_bytes record);
    void take_range(const decoded_frame& frame);
    void take_rcom(const decoded_frame& frame);
    void add_unit_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_rcom_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_sample_rows(const decoded_frame& frame, std::vector<table_row>& rows);
    void add_unidentified_row(const decoded_frame& frame, std::vector<table_row>& rows);
    void compare_with_hunter(sender_state& target);
    void begin_row(const decoded_frame& frame);
    void end_row(std::size_t table, const decoded_frame& frame, std::vector<table_row>& rows);

    table_columns columns_;
    fields_by_packet unit_fields_;
    fields_by_packet rcom_fields_;
    std::vector<std::size_t> target_columns_; ///< selected columns by index
    std::vector<std::size_t> hunter_columns_;
    std::vector<std::size_t> rcom_columns_;
    std::vector<stored_field> sample_fields_;
    std::vector<bool> from_range_; ///< by column of a unit's table

    std::unordered_map<std::uint32_t, sender_state> senders_;
    std::array<unit_state, zel::toolbox::rt_range::unit_count> units_;
    std::vector<cell> rcom_cells_;
    /// Status channels of the hunter that came wrapped, so without a record of the hunter: the
    /// senders by channel.
    std::map<std::uint8_t, std::uint32_t> pending_;
    std::map<std::uint32_t, unidentified_sender> unidentified_;
    std::uint64_t unidentified_rows_ = 0;
    std::uint64_t zero_ns_ = 0;
    std::vector<cell> cells_; ///< of the current frame's rows
    std::size_t row_begin_ = 0;
};

} // namespace rtrange
