#include "tools/rtrange/outputs/hdf5_handle.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>

namespace rtrange {
namespace {

[[noreturn]] void fail(const char* what) {
    throw hdf5_error(fmt::format("{} (when {})", std::strerror(errno), what));
}

} // namespace

hdf5_handle::hdf5_handle(hid_t id, const char* what) : id_(id) {
    if (id_ < 0)
        fail(what);
}

hdf5_handle::~hdf5_handle() {
    if (id_ >= 0)
        H5Idec_ref(id_);
}

void hdf5_handle::close() {
    if (H5Idec_ref(std::exchange(id_, H5I_INVALID_HID)) < 0)
        fail("closing");
}

void check_hdf5(herr_t result, const char* what) {
    if (result < 0)
        fail(what);
}

hdf5_handle hdf5_text_type(std::size_t size) {
    hdf5_handle type(H5Tcopy(H5T_C_S1), "creating a type");
    check_hdf5(H5Tset_size(type, std::max<std::size_t>(size, 1)), "creating a type");
    check_hdf5(H5Tset_strpad(type, H5T_STR_NULLPAD), "creating a type");
    return type;
}

void set_hdf5_attribute(hid_t object, const char* name, const std::string& text) {
    // Of variable length: common readers show fixed-length strings as bytes.
    const hdf5_handle type = hdf5_text_type(H5T_VARIABLE);
    check_hdf5(H5Tset_cset(type, H5T_CSET_UTF8), "creating a text type");
    const hdf5_handle space(H5Screate(H5S_SCALAR), "creating an attribute");
    const hdf5_handle attribute(H5Acreate2(object, name, type, space, H5P_DEFAULT, H5P_DEFAULT),
                                "creating an attribute");
    const char* const characters = text.c_str();
    check_hdf5(H5Awrite(attribute, type, &characters), "creating an attribute");
}

} // namespace rtrange
