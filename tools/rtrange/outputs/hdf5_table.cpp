#include "tools/rtrange/outputs/hdf5_table.hpp"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/tables/record_tables.hpp"

namespace rtrange {

using zel::toolbox::rt_range::field;
using zel::toolbox::rt_range::field_type;

namespace {

/// Rows per chunk: enough for good compression, few enough to keep in memory.
constexpr std::size_t chunk_rows = 4096;

/// Fast. Higher levels hardly make the data smaller.
constexpr unsigned compression_level = 1;

/// A row is stored as its timestamp, its source, and its record.
constexpr std::size_t source_offset = sizeof(std::uint64_t);
constexpr std::size_t source_size = 4;
constexpr std::size_t record_offset = source_offset + source_size;

hdf5_handle type_of(field_type type) {
    switch (type) {
    case field_type::u8:
        return {H5Tcopy(H5T_STD_U8LE), "copying a type"};
    case field_type::u16:
        return {H5Tcopy(H5T_STD_U16LE), "copying a type"};
    case field_type::u32:
        return {H5Tcopy(H5T_STD_U32LE), "copying a type"};
    case field_type::u64:
        return {H5Tcopy(H5T_STD_U64LE), "copying a type"};
    case field_type::s16:
        return {H5Tcopy(H5T_STD_I16LE), "copying a type"};
    case field_type::s32:
        return {H5Tcopy(H5T_STD_I32LE), "copying a type"};
    case field_type::s64:
        return {H5Tcopy(H5T_STD_I64LE), "copying a type"};
    case field_type::f64:
        return {H5Tcopy(H5T_IEEE_F64LE), "copying a type"};
    case field_type::ipv4:
        break;
    }
    return hdf5_text_type(longest_ipv4);
}

/// Writes an address as text, padded with zeros.
void format_address(const std::uint8_t* bytes, std::uint8_t* text) {
    std::uint32_t address = 0;
    std::memcpy(&address, bytes, sizeof(address));
    std::memset(text, 0, longest_ipv4);
    format_ipv4(address, reinterpret_cast<char*>(text));
}

/// An empty dataset of one dimension, extendible without limit.
hdf5_handle create_dataset(hid_t group, const char* name, hid_t type) {
    const hsize_t none = 0;
    const hsize_t unlimited = H5S_UNLIMITED;
    const hdf5_handle space(H5Screate_simple(1, &none, &unlimited), "creating a dataset");
    const hdf5_handle creation(H5Pcreate(H5P_DATASET_CREATE), "creating a dataset");
    const hsize_t chunk = chunk_rows;
    check_hdf5(H5Pset_chunk(creation, 1, &chunk), "creating a dataset");
    check_hdf5(H5Pset_shuffle(creation), "creating a dataset");
    check_hdf5(H5Pset_deflate(creation, compression_level), "creating a dataset");
    // Chunks are written whole, so that the library's cache of 1 MiB per dataset is of no use.
    const hdf5_handle access(H5Pcreate(H5P_DATASET_ACCESS), "creating a dataset");
    check_hdf5(H5Pset_chunk_cache(access, 0, 0, H5D_CHUNK_CACHE_W0_DEFAULT), "creating a dataset");
    return {H5Dcreate2(group, name, type, space, H5P_DEFAULT, creation, access),
            "creating a dataset"};
}

} // namespace

hdf5_table::hdf5_table(hid_t file, std::size_t table, std::span<const field> fields)
    : group_(H5Gcreate2(file, std::string(record_tables()[table].name).c_str(), H5P_DEFAULT,
                        H5P_DEFAULT, H5P_DEFAULT),
             "creating a group"),
      row_size_(record_offset + record_size(table)) {
    set_hdf5_attribute(group_, "description", std::string(record_tables()[table].description));
    create_column("reference_timestamp", 0, sizeof(std::uint64_t), false, type_of(field_type::u64),
                  "ns", "capture time since 1970");
    if (record_tables()[table].has_source)
        create_column("source", source_offset, source_size, false, hdf5_text_type(source_size), "",
                      "packet that the row comes from: ncom for NCOM of the unit's own, rcom for "
                      "an RCOM packet about it");
    for (const field& entry : fields)
        create_field_column(entry);
    stored_rows_.reserve(chunk_rows * row_size_);
}

void hdf5_table::create_field_column(const field& entry) {
    create_column(entry.name, record_offset + entry.offset, size_of(entry.type),
                  entry.type == field_type::ipv4, type_of(entry.type), entry.unit, entry.meaning);
}

void hdf5_table::create_column(const char* name, std::size_t offset, std::size_t size,
                               bool is_address, hdf5_handle type, const char* unit,
                               const char* description) {
    hdf5_handle dataset = create_dataset(group_, name, type);
    set_hdf5_attribute(dataset, "unit", unit);
    set_hdf5_attribute(dataset, "description", description);
    columns_.push_back({offset, size, is_address, std::move(type), std::move(dataset)});
}

void hdf5_table::write(const record_row& row) {
    const std::size_t begin = stored_rows_.size();
    stored_rows_.resize(begin + row_size_);
    std::uint8_t* const stored = stored_rows_.data() + begin;
    std::memcpy(stored, &row.reference_timestamp, sizeof(row.reference_timestamp));
    std::ranges::copy(row.source, stored + source_offset);
    std::ranges::copy(row.record, stored + record_offset);
    ++rows_;
    if (stored_rows_.size() == chunk_rows * row_size_)
        flush();
}

void hdf5_table::close() {
    flush();
    for (dataset_column& column : columns_)
        column.dataset.close();
    group_.close();
}

void hdf5_table::flush() {
    if (stored_rows_.empty())
        return;
    for (const dataset_column& column : columns_)
        append(column);
    stored_rows_.clear();
}

void hdf5_table::append(const dataset_column& column) {
    gather(column);
    const hsize_t count = stored_rows_.size() / row_size_;
    const hsize_t begin = rows_ - count;
    const hsize_t end = rows_;
    check_hdf5(H5Dset_extent(column.dataset, &end), "extending a dataset");
    const hdf5_handle target(H5Dget_space(column.dataset), "writing a dataset");
    check_hdf5(H5Sselect_hyperslab(target, H5S_SELECT_SET, &begin, nullptr, &count, nullptr),
               "writing a dataset");
    const hdf5_handle source(H5Screate_simple(1, &count, nullptr), "writing a dataset");
    check_hdf5(H5Dwrite(column.dataset, column.type, source, target, H5P_DEFAULT, chunk_.data()),
               "writing a dataset");
}

void hdf5_table::gather(const dataset_column& column) {
    const std::size_t element_size = column.is_address ? longest_ipv4 : column.size;
    chunk_.resize(stored_rows_.size() / row_size_ * element_size);
    std::uint8_t* element = chunk_.data();
    for (std::size_t row = column.offset; row < stored_rows_.size(); row += row_size_) {
        if (column.is_address)
            format_address(stored_rows_.data() + row, element);
        else
            std::memcpy(element, stored_rows_.data() + row, column.size);
        element += element_size;
    }
}

} // namespace rtrange
