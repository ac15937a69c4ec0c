#include "tools/rtrange/outputs/chunk_queue.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tools/rtrange/outputs/chunk_compression.hpp"

namespace rtrange {

namespace {

/// Blocks of rows that may be pending: those of several tables become full at the same time.
constexpr std::size_t most_pending = 4;

/// Columns copied in one pass over the rows, because neighbouring cells share cache lines.
constexpr std::size_t columns_at_once = 8;

} // namespace

/// Makes compressed chunks of rows.
class chunk_queue::compressor {
public:
    /// One chunk per column, empty for one that need not be written.
    std::vector<chunk> chunks_of(const row_block& rows) {
        find_varying_columns(rows);
        std::vector<chunk> chunks(rows.columns.size());
        // To h5diff, a dataset without any chunk is empty.
        if (rows.first_row == 0)
            add_constant_chunks(rows, chunks);
        for (std::span<const std::size_t> rest = varying_; !rest.empty();) {
            const auto columns = rest.first(std::min(rest.size(), columns_at_once));
            take_columns(rows, columns);
            for (std::size_t i = 0; i < columns.size(); ++i)
                chunks[columns[i]] = compressed(rows, columns[i], i);
            rest = rest.subspan(columns.size());
        }
        return chunks;
    }

private:
    /// Finds the columns with other values than their fill values.
    void find_varying_columns(const row_block& rows) {
        const std::size_t columns = rows.columns.size();
        fill_values_.clear();
        for (const dataset_column& column : rows.columns)
            fill_values_.push_back(column.fill_value);
        differences_.assign(columns, 0);
        for (std::size_t begin = 0; begin < rows.cells.size(); begin += columns) {
            const cell* const row = rows.cells.data() + begin;
            for (std::size_t column = 0; column < columns; ++column)
                differences_[column] |= row[column] ^ fill_values_[column];
        }
        varying_.clear();
        for (std::size_t column = 0; column < columns; ++column)
            if (differences_[column] != 0)
                varying_.push_back(column);
    }

    /// Makes chunks of the columns that do not vary, many of which have the same value.
    void add_constant_chunks(const row_block& rows, std::vector<chunk>& chunks) {
        std::map<std::string, chunk> known; // by element
        for (std::size_t column = 0; column < chunks.size(); ++column) {
            if (differences_[column] != 0)
                continue;
            const dataset_column& target = rows.columns[column];
            std::string element(target.format.size, '\0');
            target.format.write({&target.fill_value, 1},
                                reinterpret_cast<std::uint8_t*>(element.data()));
            chunk& constant = known[std::move(element)];
            if (constant.empty()) {
                cells_.assign(rows.count(), target.fill_value);
                constant = compressed(rows, column, 0);
            }
            chunks[column] = constant;
        }
    }

    /// Puts the cells of each of these columns one after the other.
    void take_columns(const row_block& rows, std::span<const std::size_t> columns) {
        const std::size_t count = rows.count();
        cells_.resize(columns_at_once * count);
        const cell* row = rows.cells.data();
        for (std::size_t i = 0; i < count; ++i, row += rows.columns.size())
            for (std::size_t column = 0; column < columns.size(); ++column)
                cells_[column * count + i] = row[columns[column]];
    }

    /// The chunk of a column whose cells were the i-th ones to be taken. The elements behind the
    /// last row are zero.
    chunk compressed(const row_block& rows, std::size_t column, std::size_t i) {
        const element_format& format = rows.columns[column].format;
        elements_.assign(rows.chunk_rows * format.size, 0);
        format.write(std::span(cells_).subspan(i * rows.count(), rows.count()), elements_.data());
        return compressor_.compress(elements_, format.size);
    }

    chunk_compressor compressor_;
    std::vector<cell> fill_values_; ///< by column
    std::vector<cell> differences_; ///< by column
    std::vector<std::size_t> varying_;
    std::vector<cell> cells_; ///< of some columns, column after column
    std::vector<std::uint8_t> elements_;
};

namespace {

void write(const dataset_column& column, std::uint64_t first_row, std::uint64_t rows,
           const std::vector<std::uint8_t>& chunk) {
    constexpr std::uint32_t all_filters = 0;
    const bool is_mat_file = column.format.is_mat_file;
    const dataset_extent position(is_mat_file, first_row, 0);
    const dataset_extent size(is_mat_file, first_row + rows);
    check_hdf5(H5Dset_extent(column.dataset, size.numbers()), "extending a dataset");
    check_hdf5(H5Dwrite_chunk(column.dataset, H5P_DEFAULT, all_filters, position.numbers(),
                              chunk.size(), chunk.data()),
               "writing a dataset");
}

} // namespace

chunk_queue::chunk_queue() = default;
chunk_queue::~chunk_queue() = default;

void chunk_queue::add(row_block rows) {
    if (pending_.size() == most_pending)
        write_first();
    if (free_.empty())
        free_.push_back(std::make_unique<compressor>());
    auto next = std::make_unique<job>(job{std::move(rows), {}, std::move(free_.back())});
    free_.pop_back();
    // Where the system does not permit another thread, write_first() compresses the rows.
    auto done =
        std::async([work = next.get()] { work->chunks = work->compressor->chunks_of(work->rows); });
    pending_.push_back({std::move(next), std::move(done)});
}

std::vector<cell> chunk_queue::free_cells() {
    if (free_cells_.empty())
        return {};
    std::vector<cell> cells = std::move(free_cells_.back());
    free_cells_.pop_back();
    cells.clear();
    return cells;
}

void chunk_queue::finish() {
    while (!pending_.empty())
        write_first();
}

void chunk_queue::write_first() {
    pending_job first = std::move(pending_.front());
    pending_.pop_front();
    first.done.get();
    job& work = *first.work;
    for (std::size_t column = 0; column < work.chunks.size(); ++column)
        if (!work.chunks[column].empty())
            write(work.rows.columns[column], work.rows.first_row, work.rows.count(),
                  work.chunks[column]);
    free_.push_back(std::move(work.compressor));
    free_cells_.push_back(std::move(work.rows.cells));
}

} // namespace rtrange
