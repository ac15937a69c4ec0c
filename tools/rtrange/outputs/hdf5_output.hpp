// Output as an HDF5 file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "tools/rtrange/outputs/chunk_queue.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/outputs/hdf5_table.hpp"
#include "tools/rtrange/outputs/mat_labels.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/results/result_file.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// How the file is laid out: as plain HDF5, or as a MAT file of version 7.3, which MATLAB loads.
enum class hdf5_dialect { plain, matlab };

/// Writes one file with a group per table: /hunter, /hunter_samples, ..., /rcom. In a MAT file,
/// these are structs.
class hdf5_output final : public table_output {
public:
    /// Throws failure when the file cannot be written or may not be replaced. It appears with
    /// close(). The columns must outlive the output.
    hdf5_output(const std::filesystem::path& file, hdf5_dialect dialect, result_rules rules,
                const table_columns& columns);

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    hdf5_table& open(const table_row& first_row);
    void close_tables();
    [[noreturn]] void fail(const hdf5_error& error) const;

    result_file result_; // declared first: it must be destroyed after the file is closed
    const table_columns& columns_;
    std::optional<mat_labels> labels_; ///< of a MAT file
    std::uint64_t start_ns_ = 0;       ///< time of the first row
    std::optional<hdf5_handle> file_;
    std::array<std::unique_ptr<hdf5_table>, table_count> tables_;
    chunk_queue chunks_; // declared last: its threads read the columns of the tables
};

} // namespace rtrange
