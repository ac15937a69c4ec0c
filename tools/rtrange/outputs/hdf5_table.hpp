// One table of an HDF5 file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/tables/record_rows.hpp"
#include "zel_rt_range_formatter/records/field.hpp"

namespace rtrange {

/// A group with one dataset per field, all of the same length. Datasets are chunked, compressed and
/// extendible; each has the attributes "unit" and "description".
class hdf5_table {
public:
    /// Creates the group of a table and its datasets for the fields. Throws hdf5_error when that is
    /// not possible.
    hdf5_table(hid_t file, std::size_t table,
               std::span<const zel::toolbox::rt_range::field> fields);

    /// Appends a row. Throws hdf5_error when it cannot be written.
    void write(const record_row& row);

    /// Completes the datasets. Throws hdf5_error when that is not possible.
    void close();

    std::uint64_t rows() const { return rows_; }

private:
    /// A dataset, and the bytes of a stored row that become its elements.
    struct dataset_column {
        std::size_t offset;
        std::size_t size;
        bool is_address; ///< stored as text
        hdf5_handle type;
        hdf5_handle dataset;
    };

    void create_column(const char* name, std::size_t offset, std::size_t size, bool is_address,
                       hdf5_handle type, const char* unit, const char* description);
    void create_field_column(const zel::toolbox::rt_range::field& entry);
    void flush();
    void append(const dataset_column& column);
    void gather(const dataset_column& column);

    hdf5_handle group_;
    std::vector<dataset_column> columns_;
    std::size_t row_size_;
    /// Rows of the current chunk, one after the other: timestamp, source, record.
    std::vector<std::uint8_t> stored_rows_;
    std::vector<std::uint8_t> chunk_; ///< one column of the current chunk
    std::uint64_t rows_ = 0;
};

} // namespace rtrange
