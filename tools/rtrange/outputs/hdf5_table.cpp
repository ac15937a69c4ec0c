#include "tools/rtrange/outputs/hdf5_table.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "tools/rtrange/outputs/mat_file.hpp"
#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {

namespace {

/// Rows per chunk: enough for good compression, few enough to keep in memory.
constexpr std::size_t chunk_rows = 4096;

bool is_text(cell_type type) {
    return type == cell_type::ipv4 || type == cell_type::address || type == cell_type::text;
}

/// Texts are numbers in a MAT file.
hdf5_handle type_of(const column& entry, bool is_mat_file) {
    if (is_mat_file && is_text(entry.type))
        return {H5Tcopy(H5T_STD_U32LE), "copying a type"};
    switch (entry.type) {
    case cell_type::u8:
        return {H5Tcopy(H5T_STD_U8LE), "copying a type"};
    case cell_type::u16:
        return {H5Tcopy(H5T_STD_U16LE), "copying a type"};
    case cell_type::u32:
        return {H5Tcopy(H5T_STD_U32LE), "copying a type"};
    case cell_type::u64:
        return {H5Tcopy(H5T_STD_U64LE), "copying a type"};
    case cell_type::s16:
        return {H5Tcopy(H5T_STD_I16LE), "copying a type"};
    case cell_type::s32:
        return {H5Tcopy(H5T_STD_I32LE), "copying a type"};
    case cell_type::s64:
        return {H5Tcopy(H5T_STD_I64LE), "copying a type"};
    case cell_type::f64:
    case cell_type::number:
    case cell_type::whole_number:
        return {H5Tcopy(H5T_IEEE_F64LE), "copying a type"};
    case cell_type::ipv4:
    case cell_type::address:
        return hdf5_text_type(longest_ipv4);
    case cell_type::text:
        break;
    }
    return hdf5_text_type(entry.text_size);
}

/// An address with its first byte as the most significant one.
cell swapped_bytes(cell address) {
    return (address & 0xFF) << 24 | (address & 0xFF00) << 8 | (address >> 8 & 0xFF00) |
           (address >> 24 & 0xFF);
}

/// Writes the text of a cell, padded with zeros.
void format_text(cell_type type, cell content, std::size_t size, std::uint8_t* text) {
    std::memset(text, 0, size);
    if (type == cell_type::text) {
        const std::string_view characters(text_in(content));
        std::ranges::copy(characters.substr(0, size), text);
    } else if (content != unknown_address) {
        format_ipv4(static_cast<std::uint32_t>(content), reinterpret_cast<char*>(text));
    }
}

/// An empty dataset, extendible without limit.
hdf5_handle create_dataset(hid_t group, const char* name, hid_t type, bool is_mat_file) {
    const dataset_extent none(is_mat_file, 0), unlimited(is_mat_file, H5S_UNLIMITED);
    const dataset_extent chunk(is_mat_file, chunk_rows);
    const hdf5_handle space(H5Screate_simple(none.rank(), none.numbers(), unlimited.numbers()),
                            "creating a dataset");
    const hdf5_handle creation(H5Pcreate(H5P_DATASET_CREATE), "creating a dataset");
    // The same run gives the same file.
    check_hdf5(H5Pset_obj_track_times(creation, false), "creating a dataset");
    check_hdf5(H5Pset_chunk(creation, chunk.rank(), chunk.numbers()), "creating a dataset");
    check_hdf5(H5Pset_shuffle(creation), "creating a dataset");
    // Of no effect but for the name of the filter: chunks are compressed before they are written.
    constexpr unsigned level = 1;
    check_hdf5(H5Pset_deflate(creation, level), "creating a dataset");
    // Chunks are written whole, so that the library's cache of 1 MiB per dataset is of no use.
    const hdf5_handle access(H5Pcreate(H5P_DATASET_ACCESS), "creating a dataset");
    check_hdf5(H5Pset_chunk_cache(access, 0, 0, H5D_CHUNK_CACHE_W0_DEFAULT), "creating a dataset");
    return {H5Dcreate2(group, name, type, space, H5P_DEFAULT, creation, access),
            "creating a dataset"};
}

} // namespace

hdf5_table::hdf5_table(hid_t file, const table_description& table, std::span<const column> columns,
                       chunk_queue& chunks, mat_labels* labels)
    : group_(
          H5Gcreate2(file, std::string(table.name).c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
          "creating a group"),
      chunks_(chunks), labels_(labels) {
    set_hdf5_attribute(group_, "description", std::string(table.text));
    for (const column& entry : columns)
        create_column(entry);
    if (labels != nullptr) {
        std::vector<std::string> names;
        for (const column& entry : columns)
            names.emplace_back(entry.name);
        make_mat_struct(group_, names);
    }
    stored_rows_.reserve(chunk_rows * columns_.size());
}

void hdf5_table::create_column(const column& entry) {
    const bool is_mat_file = labels_ != nullptr;
    hdf5_handle type = type_of(entry, is_mat_file);
    const std::size_t size = H5Tget_size(type);
    hdf5_handle dataset = create_dataset(group_, entry.name, type, is_mat_file);
    if (is_mat_file)
        set_mat_class(dataset, mat_class_of(entry.type));
    set_hdf5_attribute(dataset, "unit", entry.unit);
    set_hdf5_attribute(dataset, "description", entry.meaning);
    mat_labels::numbering* const labels =
        is_mat_file && entry.type == cell_type::text ? &labels_->numbering_of(entry) : nullptr;
    columns_.push_back({entry.type, size, std::move(type), std::move(dataset), labels});
}

void hdf5_table::write(std::span<const cell> cells) {
    stored_rows_.insert(stored_rows_.end(), cells.begin(), cells.end());
    ++rows_;
    if (stored_rows_.size() == chunk_rows * columns_.size())
        flush();
}

void hdf5_table::flush() {
    if (stored_rows_.empty())
        return;
    const bool is_mat_file = labels_ != nullptr;
    const std::size_t rows = stored_rows_.size() / columns_.size();
    std::vector<dataset_chunk> chunks;
    chunks.reserve(columns_.size());
    for (std::size_t column = 0; column < columns_.size(); ++column)
        chunks.push_back({columns_[column].dataset, columns_[column].element_size,
                          dataset_extent(is_mat_file, rows_ - rows, 0),
                          dataset_extent(is_mat_file, rows_), gathered(column)});
    stored_rows_.clear();
    chunks_.add(std::move(chunks));
}

void hdf5_table::close() {
    for (dataset_column& column : columns_)
        column.dataset.close();
    group_.close();
}

/// The elements of a chunk. Those behind the last row are zero.
std::vector<std::uint8_t> hdf5_table::gathered(std::size_t column) const {
    const dataset_column& target = columns_[column];
    std::vector<std::uint8_t> elements(chunk_rows * target.element_size);
    const auto cells = std::span(stored_rows_).subspan(column);
    if (!is_text(target.cells) && target.element_size == sizeof(cell)) {
        std::uint8_t* element = elements.data();
        for (std::size_t i = 0; i < cells.size(); i += columns_.size(), element += sizeof(cell))
            std::memcpy(element, &cells[i], sizeof(cell));
        return elements;
    }
    std::uint8_t* element = elements.data();
    for (std::size_t i = 0; i < cells.size(); i += columns_.size()) {
        // Texts are long to format, and mostly those of the row before.
        if (i > 0 && cells[i] == cells[i - columns_.size()])
            std::memcpy(element, element - target.element_size, target.element_size);
        else
            copy_cell(target, cells[i], element);
        element += target.element_size;
    }
    return elements;
}

void hdf5_table::copy_cell(const dataset_column& column, cell content,
                           std::uint8_t* element) const {
    if (column.labels != nullptr)
        content = column.labels->number_of(text_in(content));
    else if (labels_ != nullptr && is_text(column.cells))
        content = content == unknown_address ? 0 : swapped_bytes(content);
    else if (is_text(column.cells))
        return format_text(column.cells, content, column.element_size, element);
    std::memcpy(element, &content, column.element_size); // little-endian: the low bytes come first
}

} // namespace rtrange
