// What makes an HDF5 file a MAT file of version 7.3.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include <hdf5.h>

#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

/// Size of the block before the HDF5 data, which begins with the header of the MAT file.
inline constexpr std::size_t mat_block_size = 512;

/// Writes the header into the block of a closed file. `time_ns`, since 1970, becomes the time of
/// creation in it. Throws failure when that is not possible.
void write_mat_header(const std::filesystem::path& file, std::uint64_t time_ns);

/// Names the class, such as "uint64", of a variable or a field. Throws hdf5_error.
void set_mat_class(hid_t object, const std::string& name);

/// Makes a group a struct with these fields, in this order. Throws hdf5_error.
void make_mat_struct(hid_t group, const std::vector<std::string>& fields);

/// The class of the values of a column: texts and addresses are numbers in a MAT file.
const char* mat_class_of(cell_type type);

/// Writes a char matrix of UTF-8 texts, one per row, padded with spaces. Throws hdf5_error.
void write_mat_texts(hid_t group, const std::string& name, std::span<const std::string> texts);

} // namespace rtrange
