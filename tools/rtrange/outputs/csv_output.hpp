// Output as a folder of CSV files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tools/rtrange/outputs/csv_file.hpp"
#include "tools/rtrange/outputs/csv_writer.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/results/result_folder.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Writes one file per table: hunter.csv, hunter_samples.csv, ..., rcom.csv.
class csv_output final : public table_output {
public:
    /// Throws failure when the folder cannot be written or holds what may not be replaced. It
    /// appears with close(). The columns must outlive the output.
    csv_output(const std::filesystem::path& folder, result_rules rules,
               const table_columns& columns);

    /// The names of all files that a run may write.
    static std::vector<std::string> file_names();

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    struct table_file {
        table_file(const std::filesystem::path& path, std::span<const column> columns)
            : file(path, columns) {}

        csv_file file;
        std::vector<cell> cells; ///< of rows not yet passed to the writer
        std::uint64_t rows = 0;
    };

    static std::string name_of(std::size_t table);
    table_file& open(std::size_t table);

    result_folder result_; // declared first: it must be destroyed after the files
    const table_columns& columns_;
    std::array<std::unique_ptr<table_file>, table_count> tables_;
    csv_writer writer_; // declared last: it must be destroyed before the files
};

} // namespace rtrange
