// One table of an HDF5 file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/rtrange/outputs/chunk_queue.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/outputs/mat_labels.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// A group with one dataset per column, all of the same length. Datasets are chunked, compressed
/// and extendible; each has the attributes "unit" and "description". Unknown numbers are NaN,
/// unknown addresses are empty.
///
/// In a MAT file, the group is a struct and each dataset a column vector. Texts are numbers, which
/// the labels explain. So are addresses, with the first byte as the most significant one; unknown
/// ones are 0.
class hdf5_table {
public:
    /// Creates the group of a table and its datasets, whose chunks go into the queue. The labels
    /// are null unless this is a MAT file. Throws hdf5_error when that is not possible.
    hdf5_table(hid_t file, const table_description& table, std::span<const column> columns,
               chunk_queue& chunks, mat_labels* labels);

    /// Appends a row. Throws hdf5_error when it cannot be written.
    void write(std::span<const cell> cells);

    /// Adds the chunks of the last rows to the queue. Throws hdf5_error when that is not possible.
    void flush();

    /// Closes the datasets, when their chunks have been written. Throws hdf5_error when that is not
    /// possible.
    void close();

    std::uint64_t rows() const { return rows_; }

private:
    struct dataset_column {
        cell_type cells;
        std::size_t element_size; ///< bytes
        hdf5_handle type;
        hdf5_handle dataset;
        mat_labels::numbering* labels; ///< null unless the cells are texts of a MAT file
    };

    void create_column(const column& entry);
    std::vector<std::uint8_t> gathered(std::size_t column) const;
    void copy_cell(const dataset_column& column, cell content, std::uint8_t* element) const;

    hdf5_handle group_;
    chunk_queue& chunks_;
    mat_labels* labels_;
    std::vector<dataset_column> columns_;
    std::vector<cell> stored_rows_; ///< of the current chunk, one after the other
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
