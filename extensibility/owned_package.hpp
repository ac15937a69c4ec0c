// Output packages, owned by the plug-in until the host takes them over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "zel/package.h"

namespace zel::extensibility {

/// Returns a package to the host that created it.
struct package_deleter {
    const zel_allocator_t* allocator;
    void operator()(zel_package_t* package) const noexcept {
        zel_package_destroy(allocator, package, nullptr);
    }
};

using owned_package = std::unique_ptr<zel_package_t, package_deleter>;

/// The ordered result of one transformation.
using package_list = std::vector<owned_package>;

/// Creates a package with `size` bytes of uninitialised data. Throws the exception for the host's
/// error record, and std::runtime_error if the host returns no package.
owned_package create_package(const zel_allocator_t* allocator, std::size_t size);

/// Creates a package of a format family with a copy of `size` bytes from `data`. Throws as above.
owned_package create_package(const zel_allocator_t* allocator, const char* format_type,
                             const void* data, std::size_t size);

/// Sets the package's format family. Throws the exception for the host's error record.
void assign_format_type(const owned_package& package, const char* format_type);

/// First data byte of a package. Throws std::invalid_argument if the owner is empty.
std::uint8_t* package_data(const owned_package& package);

/// Hands the packages over to the host: returns their pointers, in list order, in an array from its
/// allocator, and leaves empty owners in the list. Throws std::bad_alloc, with nothing handed over,
/// if the allocator returns no array for them.
zel_package_t** hand_over(package_list& list, const zel_allocator_t& allocator);

} // namespace zel::extensibility
