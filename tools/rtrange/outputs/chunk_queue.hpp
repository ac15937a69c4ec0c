// Compresses rows and writes them to the datasets of a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <future>
#include <memory>
#include <span>
#include <vector>

#include <hdf5.h>

#include "tools/rtrange/outputs/hdf5_elements.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"

namespace rtrange {

/// A size of a dataset, or a position in it. In a MAT file, they have two dimensions, in the
/// reverse of MATLAB's order.
class dataset_extent {
public:
    dataset_extent(bool is_mat_file, hsize_t rows, hsize_t columns = 1)
        : numbers_{columns, rows}, first_(is_mat_file ? 0 : 1) {}
    int rank() const { return first_ == 0 ? 2 : 1; }
    const hsize_t* numbers() const { return numbers_.data() + first_; }

private:
    std::array<hsize_t, 2> numbers_;
    std::size_t first_;
};

/// A column of a table in the file.
struct dataset_column {
    hdf5_handle dataset;
    element_format format;
    cell fill_value; ///< what chunks that are not written contain
};

/// Rows of a table: one chunk of each of its datasets.
struct row_block {
    std::size_t chunk_rows;                  ///< at least those of this block
    std::span<const dataset_column> columns; ///< valid until the rows are written
    std::uint64_t first_row;
    std::vector<cell> cells; ///< row after row

    std::size_t count() const { return cells.size() / columns.size(); }
};

/// Makes chunks of rows and compresses them, with the filters shuffle and deflate, on threads of
/// its own, because that takes several times as long as decoding the rows. Writes them in the order
/// in which they were added, on the thread that adds them, so that the same run gives the same
/// file.
class chunk_queue {
public:
    chunk_queue();
    ~chunk_queue();
    chunk_queue(const chunk_queue&) = delete;
    chunk_queue& operator=(const chunk_queue&) = delete;

    /// Adds rows. Waits for those that were added first when many are pending. Throws hdf5_error
    /// when rows cannot be written, std::bad_alloc when memory does not suffice.
    void add(row_block rows);

    /// An empty vector, with the capacity of a block that has been written, if there is one.
    std::vector<cell> free_cells();

    /// Writes all rows. Throws like add().
    void finish();

private:
    class compressor;
    using chunk = std::vector<std::uint8_t>;
    struct job {
        row_block rows;
        std::vector<chunk> chunks; ///< compressed, by column; empty if not to be written
        std::unique_ptr<chunk_queue::compressor> compressor;
    };
    struct pending_job {
        std::unique_ptr<job> work;
        std::future<void> done; ///< declared last: its thread uses the work
    };

    void write_first();

    std::deque<pending_job> pending_;
    std::vector<std::unique_ptr<compressor>> free_;
    std::vector<std::vector<cell>> free_cells_;
};

} // namespace rtrange
