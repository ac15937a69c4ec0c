// Chunks of datasets on their way into a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <future>
#include <memory>
#include <vector>

#include <hdf5.h>

namespace rtrange {

/// A size of a dataset, or a position in it. Those of a MAT file have two dimensions, the first one
/// of MATLAB last.
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

/// One chunk of a dataset.
struct dataset_chunk {
    hid_t dataset;
    std::size_t element_size; ///< bytes
    dataset_extent position;  ///< of its first row
    dataset_extent size;      ///< of the dataset that ends with this chunk
    std::vector<std::uint8_t> elements;
};

/// Compresses chunks on threads of its own, with the filters shuffle and deflate, because that
/// takes several times as long as decoding their rows. Writes them in the order in which they were
/// added, on the thread that adds them, so that the same run gives the same file.
class chunk_queue {
public:
    chunk_queue();
    ~chunk_queue();
    chunk_queue(const chunk_queue&) = delete;
    chunk_queue& operator=(const chunk_queue&) = delete;

    /// Adds the chunks of some rows. Waits for those that were added first when many are pending.
    /// Throws hdf5_error when chunks cannot be compressed or written.
    void add(std::vector<dataset_chunk> chunks);

    /// Writes all chunks. Throws hdf5_error when that is not possible.
    void finish();

private:
    class compressor;
    struct job {
        std::vector<dataset_chunk> chunks;
        std::unique_ptr<chunk_queue::compressor> compressor;
    };

    void write_first();

    std::deque<std::future<job>> pending_;
    std::vector<std::unique_ptr<compressor>> free_;
};

} // namespace rtrange
