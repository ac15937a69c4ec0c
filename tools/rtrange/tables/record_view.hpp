// The plug-in's records as they stand.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/rtrange/tables/selection.hpp"
#include "tools/rtrange/tables/stored_fields.hpp"
#include "tools/rtrange/tables/table_view.hpp"

namespace rtrange {

/// Every field of every record, bit for bit, filed under the unit of the package's tag. Compares
/// with recordings of the framework.
class record_view final : public table_view {
public:
    explicit record_view(const selection& selected);

    const table_columns& columns() const override { return columns_; }
    std::optional<std::size_t> unit_table(const decoded_frame& frame) const override;
    void add_rows(const decoded_frame& frame, std::vector<table_row>& rows) override;
    void restart() override {}
    std::vector<std::string> notes() const override;

private:
    /// The rows of a unit that come from NCOM packets, direct or wrapped.
    struct ncom_rows {
        std::uint64_t all = 0;
        std::uint64_t other_heading = 0; ///< with another heading than that of the packet
        std::uint64_t other_sender = 0;  ///< from an address that is not the unit's
    };

    void add_row(std::size_t table, const decoded_frame& frame, record_bytes record,
                 std::vector<table_row>& rows);
    void count(const decoded_frame& frame, const unit_record& packet);

    table_columns columns_;
    std::vector<stored_field> ncom_fields_; ///< the selected ones
    std::vector<stored_field> rcom_fields_;
    std::vector<cell> cells_; ///< of the current frame's rows
    std::array<ncom_rows, zel::toolbox::rt_range::unit_count> counts_{};
};

} // namespace rtrange
