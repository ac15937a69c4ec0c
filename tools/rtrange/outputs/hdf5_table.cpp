#include "tools/rtrange/outputs/hdf5_table.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "tools/rtrange/outputs/chunk_compression.hpp"
#include "tools/rtrange/outputs/mat_file.hpp"

namespace rtrange {

namespace {

/// Rows per chunk of a table's datasets: enough for good compression; a block of rows takes at most
/// 2 MB.
std::size_t rows_per_chunk(std::size_t columns) {
    constexpr std::size_t most_rows = 4096;
    constexpr std::size_t most_cells = std::size_t{1} << 18;
    return std::clamp(most_cells / columns, std::size_t{1}, most_rows);
}

/// How datasets are stored, except for their fill values.
hdf5_handle creation_properties(const dataset_extent& chunk) {
    hdf5_handle creation(H5Pcreate(H5P_DATASET_CREATE), "creating a dataset");
    // The same run gives the same file.
    check_hdf5(H5Pset_obj_track_times(creation, false), "creating a dataset");
    check_hdf5(H5Pset_chunk(creation, chunk.rank(), chunk.numbers()), "creating a dataset");
    check_hdf5(H5Pset_shuffle(creation), "creating a dataset");
    // Only records the filter in the file: chunks are compressed before they are written.
    check_hdf5(H5Pset_deflate(creation, chunk_compression_level), "creating a dataset");
    return creation;
}

/// Chunks are written whole, so that the library's cache of 1 MiB per dataset is of no use.
hdf5_handle access_without_cache() {
    hdf5_handle access(H5Pcreate(H5P_DATASET_ACCESS), "creating a dataset");
    check_hdf5(H5Pset_chunk_cache(access, 0, 0, H5D_CHUNK_CACHE_W0_DEFAULT), "creating a dataset");
    return access;
}

/// No rows, but room for any number of them.
hdf5_handle extendible_space(bool is_mat_file) {
    const dataset_extent none(is_mat_file, 0), unlimited(is_mat_file, H5S_UNLIMITED);
    return {H5Screate_simple(none.rank(), none.numbers(), unlimited.numbers()),
            "creating a dataset"};
}

} // namespace

hdf5_table::hdf5_table(hid_t file, const table_description& table, std::span<const column> columns,
                       chunk_queue& chunks, mat_labels* labels)
    : file_(file), table_(table), columns_(columns), chunks_(chunks), labels_(labels),
      chunk_rows_(rows_per_chunk(columns.size())) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (is_mat_file() && columns[i].type == cell_type::text)
            label_columns_.push_back({i, labels->numbering_of(columns[i])});
}

void hdf5_table::write(std::span<const cell> cells) {
    if (cells_.capacity() == 0) {
        cells_ = chunks_.free_cells();
        cells_.reserve(chunk_rows_ * columns_.size());
    }
    cells_.insert(cells_.end(), cells.begin(), cells.end());
    const std::span row = std::span(cells_).last(cells.size());
    for (const auto& [column, labels] : label_columns_)
        row[column] = labels.number_of(text_in(row[column]));
    ++rows_;
    if (cells_.size() == chunk_rows_ * columns_.size())
        flush();
}

void hdf5_table::flush() {
    if (cells_.empty())
        return;
    const std::size_t rows = cells_.size() / columns_.size();
    if (!group_) {
        chunk_rows_ = rows; // fewer only if there are no others
        create();
    }
    chunks_.add({chunk_rows_, datasets_, rows_ - rows, std::exchange(cells_, {})});
}

/// Creates the group and its datasets. The library takes chunks that were never written for chunks
/// of fill values. Most values are constant once they are known, so that the last ones of the first
/// chunk are the fill values. That chunk is always written.
void hdf5_table::create() {
    const std::string name(table_.name);
    group_.emplace(H5Gcreate2(file_, name.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
                   "creating a group");
    set_hdf5_attribute(*group_, "description", std::string(table_.text));
    const new_datasets settings{creation_properties(dataset_extent(is_mat_file(), chunk_rows_)),
                                access_without_cache(), extendible_space(is_mat_file())};
    const auto last_row = std::span(cells_).last(columns_.size());
    std::vector<std::string> names;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        create_dataset(columns_[i], last_row[i], settings);
        names.emplace_back(columns_[i].name);
    }
    if (is_mat_file())
        make_mat_struct(*group_, names);
}

void hdf5_table::create_dataset(const column& entry, cell fill_value,
                                const new_datasets& settings) {
    const hdf5_handle type = hdf5_type_of(entry, is_mat_file());
    const element_format format{entry.type, is_mat_file(), H5Tget_size(type)};
    std::vector<std::uint8_t> element(format.size);
    format.write({&fill_value, 1}, element.data());
    check_hdf5(H5Pset_fill_value(settings.creation, type, element.data()), "creating a dataset");
    hdf5_handle dataset(H5Dcreate2(*group_, entry.name, type, settings.space, H5P_DEFAULT,
                                   settings.creation, settings.access),
                        "creating a dataset");
    if (is_mat_file())
        set_mat_class(dataset, mat_class_of(entry.type));
    set_hdf5_attribute(dataset, "unit", entry.unit);
    set_hdf5_attribute(dataset, "description", entry.meaning);
    datasets_.push_back({std::move(dataset), format, fill_value});
}

void hdf5_table::close() {
    const dataset_extent size(is_mat_file(), rows_);
    for (dataset_column& column : datasets_) {
        check_hdf5(H5Dset_extent(column.dataset, size.numbers()), "extending a dataset");
        column.dataset.close();
    }
    group_->close();
}

} // namespace rtrange
