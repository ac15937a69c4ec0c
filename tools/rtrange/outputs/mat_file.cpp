#include "tools/rtrange/outputs/mat_file.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <ios>
#include <system_error>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"

namespace rtrange {
namespace {

constexpr const char* describing = "describing a variable";
constexpr const char* writing_texts = "writing texts";

/// MATLAB's characters. Bytes that are not UTF-8 become question marks.
std::u16string utf16(const std::string& text) {
    try {
        return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
    } catch (const std::system_error&) {
        std::u16string characters(text.begin(), text.end());
        std::ranges::replace_if(
            characters, [](char16_t each) { return each > 0x7F; }, u'?');
        return characters;
    }
}

void set_attribute(hid_t object, const char* name, hid_t type, hid_t space, const void* value) {
    const hdf5_handle attribute(H5Acreate2(object, name, type, space, H5P_DEFAULT, H5P_DEFAULT),
                                describing);
    check_hdf5(H5Awrite(attribute, type, value), describing);
}

} // namespace

void write_mat_header(const std::filesystem::path& file, std::uint64_t time_ns) {
    constexpr std::size_t text_size = 116;
    const auto time = static_cast<std::time_t>(time_ns / 1'000'000'000);
    std::string header =
        fmt::format("MATLAB 7.3 MAT-file, Platform: rtrange, Created on: {:%a %b %e %H:%M:%S %Y} "
                    "HDF5 schema 1.00 .",
                    fmt::gmtime(time));
    header.resize(text_size, ' ');
    header.append(8, '\0');         // no data of subsystems
    header.append("\x00\x02IM", 4); // version 2.0, little-endian
    std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
    stream << header << std::flush;
    if (!stream)
        throw failure(fmt::format("cannot write '{}': {}", file.string(), std::strerror(errno)));
}

void set_mat_class(hid_t object, const std::string& name) {
    const hdf5_handle type(H5Tcopy(H5T_C_S1), describing);
    check_hdf5(H5Tset_size(type, name.size()), describing);
    const hdf5_handle space(H5Screate(H5S_SCALAR), describing);
    set_attribute(object, "MATLAB_class", type, space, name.data());
}

void make_mat_struct(hid_t group, const std::vector<std::string>& fields) {
    set_mat_class(group, "struct");
    const hdf5_handle letter(H5Tcopy(H5T_C_S1), describing);
    const hdf5_handle type(H5Tvlen_create(letter), describing);
    const hsize_t count = fields.size();
    const hdf5_handle space(H5Screate_simple(1, &count, nullptr), describing);
    std::vector<hvl_t> names;
    names.reserve(fields.size());
    for (const std::string& field : fields)
        names.push_back({field.size(), const_cast<char*>(field.data())}); // only read
    set_attribute(group, "MATLAB_fields", type, space, names.data());
}

const char* mat_class_of(cell_type type) {
    switch (type) {
    case cell_type::u8:
        return "uint8";
    case cell_type::u16:
        return "uint16";
    case cell_type::u64:
        return "uint64";
    case cell_type::s16:
        return "int16";
    case cell_type::s32:
        return "int32";
    case cell_type::s64:
        return "int64";
    case cell_type::f64:
    case cell_type::number:
    case cell_type::whole_number:
        return "double";
    case cell_type::u32:
    case cell_type::ipv4:
    case cell_type::address:
    case cell_type::text:
        break;
    }
    return "uint32";
}

void write_mat_texts(hid_t group, const std::string& name, std::span<const std::string> texts) {
    std::vector<std::u16string> rows;
    std::size_t longest = 1;
    for (const std::string& text : texts) {
        rows.push_back(utf16(text));
        longest = std::max(longest, rows.back().size());
    }
    // The first dimension of a variable is the last one of its dataset.
    const std::array<hsize_t, 2> size{longest, rows.size()};
    std::u16string characters(longest * rows.size(), u' ');
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t i = 0; i < rows[row].size(); ++i)
            characters[i * rows.size() + row] = rows[row][i];
    const hdf5_handle space(H5Screate_simple(2, size.data(), nullptr), writing_texts);
    const hdf5_handle creation(H5Pcreate(H5P_DATASET_CREATE), writing_texts);
    check_hdf5(H5Pset_obj_track_times(creation, false), writing_texts);
    const hdf5_handle dataset(
        H5Dcreate2(group, name.c_str(), H5T_STD_U16LE, space, H5P_DEFAULT, creation, H5P_DEFAULT),
        writing_texts);
    set_mat_class(dataset, "char");
    const hdf5_handle scalar(H5Screate(H5S_SCALAR), writing_texts);
    const std::int32_t characters_of_two_bytes = 2;
    set_attribute(dataset, "MATLAB_int_decode", H5T_STD_I32LE, scalar, &characters_of_two_bytes);
    check_hdf5(H5Dwrite(dataset, H5T_STD_U16LE, H5S_ALL, H5S_ALL, H5P_DEFAULT, characters.data()),
               writing_texts);
}

} // namespace rtrange
