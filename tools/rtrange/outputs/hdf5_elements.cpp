#include "tools/rtrange/outputs/hdf5_elements.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "tools/rtrange/tables/ipv4.hpp"

namespace rtrange {
namespace {

bool is_address(cell_type type) {
    return type == cell_type::ipv4 || type == cell_type::address;
}

bool is_text(cell_type type) {
    return type == cell_type::text || is_address(type);
}

/// The type of numbers; those of texts and addresses have 32 bits.
hid_t number_type(cell_type type) {
    switch (type) {
    case cell_type::u8:
        return H5T_STD_U8LE;
    case cell_type::u16:
        return H5T_STD_U16LE;
    case cell_type::u32:
    case cell_type::text:
    case cell_type::ipv4:
    case cell_type::address:
        return H5T_STD_U32LE;
    case cell_type::u64:
        return H5T_STD_U64LE;
    case cell_type::s16:
        return H5T_STD_I16LE;
    case cell_type::s32:
        return H5T_STD_I32LE;
    case cell_type::s64:
        return H5T_STD_I64LE;
    case cell_type::f64:
    case cell_type::number:
    case cell_type::whole_number:
        break;
    }
    return H5T_IEEE_F64LE;
}

/// The number of an address with its first byte as the most significant one.
cell number_of_address(cell address) {
    if (address == unknown_address)
        return 0;
    return (address & 0xFF) << 24 | (address & 0xFF00) << 8 | (address >> 8 & 0xFF00) |
           (address >> 24 & 0xFF);
}

} // namespace

hdf5_handle hdf5_type_of(const column& entry, bool is_mat_file) {
    if (is_text(entry.type) && !is_mat_file)
        return hdf5_text_type(is_address(entry.type) ? longest_ipv4 : entry.text_size);
    return {H5Tcopy(number_type(entry.type)), "copying a type"};
}

void element_format::write(std::span<const cell> cells, std::uint8_t* elements) const {
    if (size == sizeof(cell) && !is_text(type)) {
        std::memcpy(elements, cells.data(), cells.size_bytes());
        return;
    }
    for (std::size_t i = 0; i < cells.size(); ++i, elements += size)
        // Formatting a text is slow, and most texts equal that of the previous row.
        if (i > 0 && cells[i] == cells[i - 1])
            std::memcpy(elements, elements - size, size);
        else
            write(cells[i], elements);
}

void element_format::write(cell content, std::uint8_t* element) const {
    if (!is_mat_file && is_text(type)) {
        std::memset(element, 0, size);
        if (type == cell_type::text)
            std::ranges::copy(std::string_view(text_in(content)).substr(0, size), element);
        else if (content != unknown_address)
            format_ipv4(static_cast<std::uint32_t>(content), reinterpret_cast<char*>(element));
        return;
    }
    if (is_address(type))
        content = number_of_address(content);
    std::memcpy(element, &content, size); // little-endian: the low bytes come first
}

} // namespace rtrange
