// Output as an HTML page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/report/local_plane.hpp"
#include "tools/rtrange/report/report_stream.hpp"
#include "tools/rtrange/report/row_streams.hpp"
#include "tools/rtrange/results/result_file.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Arguments of a report.
struct report_options {
    std::filesystem::path output;                ///< HTML file
    bool overwrite = false;                      ///< replace an earlier report
    std::vector<std::filesystem::path> captures; ///< shown in the title
    std::string view;                            ///< "measured" or "record"
    std::vector<std::string> fields; ///< to plot instead of the default plots, if there are any
};

/// Writes one self-contained HTML file: the page, the plotting library, and the rows of all units.
/// Memory does not grow with the run. Sample batches are left out.
class report_output final : public table_output {
public:
    /// Throws failure when the file cannot be written or may not be replaced. It appears with
    /// close(). The columns and the outcomes of the current run must outlive the output.
    report_output(report_options options, const table_columns& columns,
                  const frame_outcomes& outcomes);

    /// Adds a sentence about the run to the header.
    void add_note(std::string note) { notes_.push_back(std::move(note)); }

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    report_stream& stream_of(const stream_key& key, std::size_t table);
    report_stream& open(const stream_key& key, std::size_t table);

    report_options options_;
    std::vector<std::string> notes_;
    const table_columns& columns_;
    const frame_outcomes& outcomes_;
    row_streams rows_;
    result_file result_; // declared before the file, which must be closed first
    output_file file_;
    local_plane plane_;
    std::uint64_t zero_ns_ = 0; ///< origin of the times on the page
    std::vector<std::unique_ptr<report_stream>> streams_;
    std::map<stream_key, report_stream*> streams_by_key_;
};

} // namespace rtrange
