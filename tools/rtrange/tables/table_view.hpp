// The interface of the two views of a run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/rtrange/tables/decoded_packages.hpp"
#include "tools/rtrange/tables/received_packet.hpp"
#include "tools/rtrange/tables/table.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

/// The addresses that the decoder knows at a moment, by unit.
using known_addresses =
    std::array<std::optional<std::uint32_t>, zel::toolbox::rt_range::unit_count>;

/// One decoded frame.
struct decoded_frame {
    std::uint64_t time_ns; ///< since 1970
    std::uint64_t zero_ns; ///< time of the first frame of the run
    const received_packet& packet;
    const decoded_packages& packages;
    const known_addresses& addresses; ///< after the frame was decoded
};

/// Makes rows of what the frames of a run were decoded into.
class table_view {
public:
    table_view() = default;
    table_view(const table_view&) = delete;
    table_view& operator=(const table_view&) = delete;
    virtual ~table_view() = default;

    /// The columns of all tables, those that the user selected.
    virtual const table_columns& columns() const = 0;

    /// The table, selected or not, of the row of the unit that a packet is about, if it has one.
    virtual std::optional<std::size_t> unit_table(const decoded_frame& frame) const = 0;

    /// Appends the rows of a frame.
    virtual void add_rows(const decoded_frame& frame, std::vector<table_row>& rows) = 0;

    /// Forgets what packets have brought: the decoder was restarted.
    virtual void restart() = 0;

    /// What a reader of the tables has to know of this run, one sentence each, for people.
    virtual std::vector<std::string> notes() const = 0;
};

} // namespace rtrange
