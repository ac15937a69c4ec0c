// One table of an HDF5 file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// A group with one dataset per column, all of the same length. Datasets are chunked, compressed
/// and extendible; each has the attributes "unit" and "description". Unknown numbers are NaN,
/// unknown addresses are empty.
class hdf5_table {
public:
    /// Creates the group of a table and its datasets. Throws hdf5_error when that is not possible.
    hdf5_table(hid_t file, const table_description& table, std::span<const column> columns);

    /// Appends a row. Throws hdf5_error when it cannot be written.
    void write(std::span<const cell> cells);

    /// Completes the datasets. Throws hdf5_error when that is not possible.
    void close();

    std::uint64_t rows() const { return rows_; }

private:
    struct dataset_column {
        cell_type cells;
        std::size_t element_size; ///< bytes
        hdf5_handle type;
        hdf5_handle dataset;
    };

    void create_column(const column& entry);
    void flush();
    void append(std::size_t column);
    void gather(std::size_t column);

    hdf5_handle group_;
    std::vector<dataset_column> columns_;
    std::vector<cell> stored_rows_;   ///< of the current chunk, one after the other
    std::vector<std::uint8_t> chunk_; ///< one column of the current chunk
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
