// One table of an HDF5 file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tools/rtrange/outputs/chunk_queue.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/outputs/mat_labels.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// A group with one dataset per column, all of the same length. Datasets are chunked, compressed
/// and extendible; each has the attributes "unit" and "description".
///
/// In a MAT file, the group is a struct and each dataset a column vector. Texts are numbers, which
/// the labels explain.
class hdf5_table {
public:
    /// A table whose chunks go into the queue. The labels are null unless this is a MAT file. The
    /// arguments must outlive the table.
    hdf5_table(hid_t file, const table_description& table, std::span<const column> columns,
               chunk_queue& chunks, mat_labels* labels);

    /// Appends a row. Throws hdf5_error when it cannot be written.
    void write(std::span<const cell> cells);

    /// Adds the last rows to the queue. Throws hdf5_error when that is not possible.
    void flush();

    /// Completes the datasets, when all chunks have been written. Throws hdf5_error when that is
    /// not possible.
    void close();

    std::uint64_t rows() const { return rows_; }

private:
    struct label_column {
        std::size_t column;
        mat_labels::numbering& labels;
    };

    struct new_datasets {
        hdf5_handle creation;
        hdf5_handle access;
        hdf5_handle space;
    };

    bool is_mat_file() const { return labels_ != nullptr; }
    void create();
    void create_dataset(const column& entry, cell fill_value, const new_datasets& settings);

    hid_t file_;
    const table_description& table_;
    std::span<const column> columns_;
    chunk_queue& chunks_;
    mat_labels* labels_;
    std::size_t chunk_rows_;
    std::vector<label_column> label_columns_; ///< texts of a MAT file
    std::optional<hdf5_handle> group_;        ///< from the first chunk on
    std::vector<dataset_column> datasets_;
    std::vector<cell> cells_; ///< of the rows of the current chunk
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
