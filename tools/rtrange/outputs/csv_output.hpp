// Output as a folder of CSV files.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

#include "tools/rtrange/outputs/csv_file.hpp"
#include "tools/rtrange/outputs/record_output.hpp"
#include "tools/rtrange/tables/record_tables.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {

/// Writes one file per table: hunter.csv, hunter_samples.csv, ..., rcom.csv.
class csv_output final : public record_output {
public:
    /// Creates the folder. Throws failure when that is not possible. The selection must outlive the
    /// output.
    csv_output(const std::filesystem::path& folder, const selection& selected);

    /// The file of a table.
    static std::filesystem::path file_of(const std::filesystem::path& folder, std::size_t table);

    void write(const record_row& row) override;

    /// Also removes tables of an earlier run for which this run has no rows, unless this run has no
    /// rows at all.
    void close() override;

    std::vector<written_table> tables() const override;

private:
    csv_file& open(std::size_t table);

    std::filesystem::path folder_;
    const selection& selected_;
    std::array<std::unique_ptr<csv_file>, record_table_count> files_;
    file_writer writer_; // declared last: it must be destroyed before the files
};

} // namespace rtrange
