// A run as a folder of CSV files.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

#include "tools/rtrange/outputs/csv_file.hpp"
#include "tools/rtrange/outputs/record_output.hpp"
#include "tools/rtrange/selection.hpp"

namespace rtrange {

/// Writes one file per table: hunter.csv, hunter_samples.csv, ..., rcom.csv.
class csv_output final : public record_output {
public:
    /// Creates the folder. Throws failure when that is not possible. The selection has to outlive
    /// the output.
    csv_output(const std::filesystem::path& folder, const selection& selection);

    /// The file of a table.
    static std::filesystem::path file_of(const std::filesystem::path& folder, std::size_t table);

    void write(const record_row& row) override;

    /// Also removes the tables that an earlier run left and this one has no rows for, unless this
    /// one has no rows at all.
    void close() override;

    std::vector<written_table> tables() const override;

private:
    csv_file& open(std::size_t table);

    std::filesystem::path folder_;
    const selection& selection_;
    std::array<std::unique_ptr<csv_file>, record_table_count> files_;
    file_writer writer_; // ends before the files that it writes
};

} // namespace rtrange
