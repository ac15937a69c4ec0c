// Cells as elements of a dataset.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

/// The type of a column's dataset. In a MAT file, texts and addresses are numbers. Throws
/// hdf5_error when the library cannot make it.
hdf5_handle hdf5_type_of(const column& entry, bool is_mat_file);

/// How the elements of a column are stored. Unknown numbers are NaN, unknown addresses are empty.
///
/// In a MAT file, the cells of texts contain the numbers of their labels instead. Addresses have
/// their first byte as the most significant one; unknown ones are 0.
struct element_format {
    cell_type type;
    bool is_mat_file;
    std::size_t size; ///< of an element, in bytes

    /// Writes the elements of these cells, one after the other.
    void write(std::span<const cell> cells, std::uint8_t* elements) const;

private:
    void write(cell content, std::uint8_t* element) const;
};

} // namespace rtrange
