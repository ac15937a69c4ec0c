// Frames through one formatter instance of the plug-in.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "tools/rtrange/captures/captured_frame.hpp"
#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/outputs/record_output.hpp"
#include "tools/rtrange/run_options.hpp"
#include "tools/rtrange/tables/record_tables.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {

/// Drives one formatter instance frame by frame, as one run.
class frame_decoder {
public:
    /// Loads the plug-in. Throws std::runtime_error when it cannot be used.
    explicit frame_decoder(const run_options& options);

    /// Decodes a frame and writes those of its rows that are selected. Throws failure when they
    /// cannot be written, and host_error when the plug-in fails.
    void decode(const captured_frame& frame, record_output& output);

    const selection& selected() const { return selected_; }
    const frame_outcomes& outcomes() const { return outcomes_; }

    /// Whether any frame has brought a row of this table, selected or not.
    bool has_rows(std::size_t table) const { return tables_with_rows_.test(table); }

private:
    using wrap_function = void (*)(std::span<const std::uint8_t>, zel::host::raw_package_buffer&);

    selection selected_;
    frame_outcomes outcomes_;
    zel::host::plugin plugin_;
    zel::host::host_services services_;
    zel::host::formatter_instance instance_;
    wrap_function wrap_;
    zel::host::raw_package_buffer raw_package_;
    std::vector<record_row> rows_;
    std::bitset<record_table_count> tables_with_rows_;
};

} // namespace rtrange
