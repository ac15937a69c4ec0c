// A host's zelc, loaded at run time, and owners of what it creates.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <utility>

#include "host/loader/shared_library.hpp"
#include "zel/package.h"
#include "zel/raw_package.h"

namespace zelc_check {

/// The nine functions; null where the library has no export of the name.
class zelc {
    zel::host::shared_library library_;
    std::string missing_;

    template <typename Function>
    Function find(const char* name);

public:
    /// Throws std::runtime_error when the file cannot be loaded.
    explicit zelc(const std::filesystem::path& file);

    /// Names of the functions that the library does not export, separated by spaces.
    const std::string& missing() const { return missing_; }

    const decltype(&zel_error_details_create) create_error;
    const decltype(&zel_error_details_get_code) get_code;
    const decltype(&zel_error_details_get_description) get_description;
    const decltype(&zel_error_details_destroy) destroy_error;
    const decltype(&zel_package_create) create_package;
    const decltype(&zel_package_create_assign_data) create_package_with_data;
    const decltype(&zel_package_assign_format_type) assign_format_type;
    const decltype(&zel_package_destroy) destroy_package;
    const decltype(&zel_raw_package_check_state_value) check_state;
};

/// The allocator of all packages. Its members host_* are null.
extern const zel_allocator_t allocator;

/// Whether allocate_array was ever called with another context than that of `allocator`.
bool got_foreign_context();

/// The target of an error record; destroys the record.
class error_slot {
public:
    explicit error_slot(const zelc& library) : library_(library) {}
    error_slot(error_slot&& other) noexcept;
    error_slot& operator=(error_slot&&) = delete;
    ~error_slot() { clear(); }

    zel_error_details_t** target() { return &record_; }
    const zel_error_details_t* get() const { return record_; }
    /// Destroys the record, if there is one.
    void clear();

private:
    const zelc& library_;
    zel_error_details_t* record_ = nullptr;
};

/// A record made by zel_error_details_create. Throws not_checkable if there is none.
error_slot make_error(const zelc& library, std::uint32_t code, const char* description);

/// A package, destroyed at the end.
class package {
public:
    package(const zelc& library, zel_package_t* owned) : library_(library), package_(owned) {}
    package(package&& other) noexcept;
    package& operator=(package&&) = delete;
    ~package();

    zel_package_t* get() const { return package_; }
    /// Leaves the package to the caller.
    zel_package_t* release() { return std::exchange(package_, nullptr); }
    std::span<std::uint8_t> header() const;
    std::span<std::uint8_t> data(std::size_t size) const;

    /// Fills what a plug-in fills: the data, and the header except host_block and size.
    void fill(std::uint8_t value, std::size_t size) const;

private:
    const zelc& library_;
    zel_package_t* package_;
};

/// A package made by zel_package_create. Throws not_checkable if there is none.
package make_package(const zelc& library, std::size_t size);

/// A package made by zel_package_create_assign_data. Throws not_checkable if there is none.
package make_package(const zelc& library, const char* format_type,
                     std::span<const std::uint8_t> data);

} // namespace zelc_check
