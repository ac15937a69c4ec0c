// What packets have brought since the decoder was started.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tools/rtrange/tables/measured_fields.hpp"
#include "tools/rtrange/tables/measured_values.hpp"
#include "tools/rtrange/tables/table_view.hpp"

namespace rtrange {

/// Keeps the values of the view "measured": those from NCOM by sender, those from extended range
/// packets by unit. Cells are by column of measured_unit_columns() or measured_rcom_columns(). They
/// are valid until the next frame.
class measured_state {
public:
    measured_state();

    /// Takes the values of a plausible packet.
    void take(const decoded_frame& frame);

    /// Forgets everything.
    void restart();

    /// What NCOM of an address has brought.
    const std::vector<cell>& of_sender(std::uint32_t address) { return sender(address).cells; }

    /// What NCOM of a unit has brought, and RCOM of its position. For targets, also the differences
    /// to the hunter.
    const std::vector<cell>& of_unit(std::size_t unit);

    /// What extended range packets about a target have brought.
    const std::vector<cell>& of_range(std::size_t unit) const { return units_[unit].cells; }

    /// What RCOM has brought.
    const std::vector<cell>& of_rcom() const { return rcom_cells_; }

private:
    /// What the NCOM packets of one sender have brought, and RCOM of a target's position.
    struct sender_state {
        std::vector<cell> cells;
        std::int64_t packets = 0;
        gps_clock clock;
        std::optional<measured_motion> motion;
    };
    struct unit_state {
        std::optional<std::uint32_t> address;
        sender_state unaddressed; ///< stands in for the sender until the address is known
        std::vector<cell> cells;  ///< what extended range packets have brought
    };

    void learn_addresses(const known_addresses& addresses);
    sender_state& sender(std::uint32_t address);
    sender_state& sender_of(std::size_t unit);
    void take_ncom(const decoded_frame& frame);
    static void take_packet(sender_state& sender, const received_packet& packet);
    void take_channel(sender_state& sender, std::uint8_t channel, record_bytes record) const;
    void take_range(const decoded_frame& frame);
    void take_rcom(const decoded_frame& frame);
    void compare_with_hunter(sender_state& target);

    measured_fields unit_fields_;
    measured_fields rcom_fields_;
    std::unordered_map<std::uint32_t, sender_state> senders_;
    std::array<unit_state, zel::toolbox::rt_range::unit_count> units_;
    std::vector<cell> rcom_cells_;
    /// Status channels of the hunter that came wrapped, so without a record of the hunter: the
    /// senders by channel.
    std::map<std::uint8_t, std::uint32_t> pending_;
};

} // namespace rtrange
