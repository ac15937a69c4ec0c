// Output as an HTML page.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/outputs/record_output.hpp"
#include "tools/rtrange/report/local_plane.hpp"
#include "tools/rtrange/report/report_stream.hpp"
#include "tools/rtrange/tables/record_tables.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {

/// Arguments of a report.
struct report_options {
    std::filesystem::path output = "report.html";
    std::vector<std::filesystem::path> captures; ///< shown in the title
    bool named_fields = false; ///< plot the selected fields instead of the default plots
};

/// Writes one self-contained HTML file: the page, the plotting library, and the rows of all units.
/// Memory does not grow with the run. Sample batches are left out.
class report_output final : public record_output {
public:
    /// Creates the file. Throws failure when that is not possible. The selection and the outcomes
    /// of the current run must outlive the output.
    report_output(report_options options, const selection& selected,
                  const frame_outcomes& outcomes);

    /// Adds a sentence about a fault of the run to the header.
    void add_note(std::string note) { notes_.push_back(std::move(note)); }

    void write(const record_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    /// One stream per unit and kind of row.
    using stream_key = std::pair<std::string, row_kind>;

    row_kind kind_of(const record_row& row);
    report_stream& stream_of(const record_row& row);
    report_stream& open(const stream_key& key, std::size_t table);

    report_options options_;
    std::vector<std::string> notes_;
    const selection& selected_;
    const frame_outcomes& outcomes_;
    output_file file_;
    local_plane plane_;
    std::uint64_t zero_ns_ = 0; ///< origin of the times on the page
    std::vector<std::unique_ptr<report_stream>> streams_;
    std::map<stream_key, report_stream*> streams_by_key_;
    std::array<std::optional<std::uint64_t>, record_table_count>
        packet_counts_; ///< of the previous row, by table
};

} // namespace rtrange
