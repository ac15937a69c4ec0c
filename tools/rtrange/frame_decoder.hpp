// Frames through the plug-in.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "tools/rtrange/captures/captured_frame.hpp"
#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/run_options.hpp"
#include "tools/rtrange/tables/selection.hpp"
#include "tools/rtrange/tables/table_view.hpp"

namespace rtrange {

/// The columns of the table of refused frames.
const std::vector<column>& refused_columns();

/// Drives a formatter instance frame by frame, as one run. After a gap, it continues with a new
/// instance.
class frame_decoder {
public:
    /// Loads the plug-in. Throws std::runtime_error when it cannot be used, and usage_failure when
    /// a selected field is not in the view.
    explicit frame_decoder(const run_options& options);

    /// Decodes a frame and writes those of its rows that are selected. Throws failure when they
    /// cannot be written, and host_error when the plug-in fails.
    void decode(const captured_frame& frame, table_output& output);

    /// The columns of the tables. Valid as long as the decoder.
    const table_columns& columns() const { return columns_; }

    const selection& selected() const { return selected_; }
    const frame_outcomes& outcomes() const { return outcomes_; }

    /// The metadata of the plug-in: key=value lines separated by line feeds.
    std::string_view plugin_metadata() const { return plugin_.metadata(); }

    /// What a reader of the tables has to know of this run, one sentence each.
    std::vector<std::string> notes() const { return view_->notes(); }

    /// The number of decoded rows that have been written.
    std::uint64_t rows() const { return written_rows_; }

    /// Whether any frame has brought a row of this table, selected or not.
    bool has_rows(std::size_t table) const { return tables_with_rows_.test(table); }

private:
    using wrap_function = void (*)(std::span<const std::uint8_t>, zel::host::raw_package_buffer&);

    void start_instance();
    void restart_after_gap();
    void write_refused(const captured_frame& frame, table_output& output);

    selection selected_;
    std::unique_ptr<table_view> view_;
    table_columns columns_;
    std::uint64_t restart_gap_ns_;
    frame_outcomes outcomes_;
    zel::host::plugin plugin_;
    zel::host::host_services services_;
    const zel_formatter_dispatch_table_t& formatter_;
    std::optional<zel::host::formatter_instance> instance_;
    wrap_function wrap_;
    std::uint64_t zero_ns_ = 0; ///< time of the first frame
    zel::host::raw_package_buffer raw_package_;
    decoded_packages packages_;
    std::vector<table_row> rows_;
    std::bitset<table_count> tables_with_rows_;
    std::uint64_t written_rows_ = 0;
};

} // namespace rtrange
