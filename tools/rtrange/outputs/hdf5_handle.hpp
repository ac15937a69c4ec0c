// Objects of the HDF5 library.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

#include <hdf5.h>

namespace rtrange {

/// A function of the library gave the sign of an error: what was going on, and the system's reason.
class hdf5_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Owns an HDF5 identifier of any kind.
class hdf5_handle {
public:
    /// Takes what a function of the library gave. Throws hdf5_error, naming `what` was going on,
    /// when that is the sign of an error.
    hdf5_handle(hid_t id, const char* what);
    hdf5_handle(hdf5_handle&& other) noexcept : id_(std::exchange(other.id_, H5I_INVALID_HID)) {}
    hdf5_handle& operator=(hdf5_handle&& other) = delete;
    ~hdf5_handle();

    operator hid_t() const { return id_; } // what all functions of the library take

    /// Closes it now. Throws hdf5_error when the library cannot.
    void close();

private:
    hid_t id_;
};

/// Throws hdf5_error when a function of the library gave the sign of an error.
void check_hdf5(herr_t result, const char* what);

/// A string type for `size` characters, or for any number of them: H5T_VARIABLE.
hdf5_handle hdf5_text_type(std::size_t size);

/// Gives a file, group or dataset an attribute of text.
void set_hdf5_attribute(hid_t object, const char* name, const std::string& text);

} // namespace rtrange
