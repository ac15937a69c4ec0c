// Handles of HDF5 objects.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

#include <hdf5.h>

namespace rtrange {

/// A function of the HDF5 library returned an error. The message is the system's reason and what
/// failed.
class hdf5_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Owns an HDF5 identifier of any kind.
class hdf5_handle {
public:
    /// Takes an identifier that a function of the library returned. Throws hdf5_error, with `what`
    /// the function was to do, when it is an error value.
    hdf5_handle(hid_t id, const char* what);
    hdf5_handle(hdf5_handle&& other) noexcept : id_(std::exchange(other.id_, H5I_INVALID_HID)) {}
    hdf5_handle& operator=(hdf5_handle&& other) = delete;
    ~hdf5_handle();

    operator hid_t() const { return id_; } // the argument type of all functions of the library

    /// Closes the object. Throws hdf5_error when that fails.
    void close();

private:
    hid_t id_;
};

/// Throws hdf5_error when `result`, of a function of the library, is an error value.
void check_hdf5(herr_t result, const char* what);

/// A string type for `size` characters, or, with H5T_VARIABLE, for any number of them.
hdf5_handle hdf5_text_type(std::size_t size);

/// Adds a text attribute to a file, group or dataset.
void set_hdf5_attribute(hid_t object, const char* name, const std::string& text);

} // namespace rtrange
