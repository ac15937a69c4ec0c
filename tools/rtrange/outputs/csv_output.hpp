// Output as a folder of CSV files.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

#include "tools/rtrange/outputs/csv_file.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Writes one file per table: hunter.csv, hunter_samples.csv, ..., rcom.csv.
class csv_output final : public table_output {
public:
    /// Creates the folder. Throws failure when that is not possible. The columns must outlive the
    /// output.
    csv_output(const std::filesystem::path& folder, const table_columns& columns);

    /// The file of a table.
    static std::filesystem::path file_of(const std::filesystem::path& folder, std::size_t table);

    void write(const table_row& row) override;

    /// Also removes tables of an earlier run for which this run has no rows, unless this run has no
    /// rows at all.
    void close() override;

    std::vector<written_table> tables() const override;

private:
    csv_file& open(std::size_t table);

    std::filesystem::path folder_;
    const table_columns& columns_;
    std::array<std::unique_ptr<csv_file>, table_count> files_;
    file_writer writer_; // declared last: it must be destroyed before the files
};

} // namespace rtrange
