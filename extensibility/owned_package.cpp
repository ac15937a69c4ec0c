#include "extensibility/owned_package.hpp"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "extensibility/error_translation.hpp"

namespace zel::extensibility {
namespace {

/// Takes ownership of the package that a creation function of the host returned. A pointer that a
/// failing host leaves behind is not ours, so the error record is converted first.
owned_package take(const zel_allocator_t* allocator, zel_package_t* package,
                   zel_error_details_t*& error) {
    runtime::throw_if_failed(error);
    if (package == nullptr)
        throw std::runtime_error("failed to allocate 'zel_package_t' instance");
    return {package, package_deleter{allocator}};
}

} // namespace

owned_package create_package(const zel_allocator_t* allocator, std::size_t size) {
    zel_package_t* package = nullptr;
    zel_error_details_t* error = nullptr;
    zel_package_create(allocator, size, &package, &error);
    return take(allocator, package, error);
}

owned_package create_package(const zel_allocator_t* allocator, const char* format_type,
                             const void* data, std::size_t size) {
    zel_package_t* package = nullptr;
    zel_error_details_t* error = nullptr;
    zel_package_create_assign_data(allocator, format_type, data, size, &package, &error);
    return take(allocator, package, error);
}

void assign_format_type(const owned_package& package, const char* format_type) {
    zel_error_details_t* error = nullptr;
    zel_package_assign_format_type(package.get(), format_type, &error);
    runtime::throw_if_failed(error);
}

std::uint8_t* package_data(const owned_package& package) {
    if (package == nullptr)
        throw std::invalid_argument("invalid package state");
    return reinterpret_cast<std::uint8_t*>(package.get()) + sizeof(zel_package_t);
}

zel_package_t** hand_over(package_list& list, const zel_allocator_t& allocator) {
    auto** const array = static_cast<zel_package_t**>(
        allocator.allocate_array(list.size(), sizeof(zel_package_t*), allocator.context));
    if (array == nullptr && !list.empty())
        throw std::bad_alloc();
    std::ranges::transform(list, array, [](owned_package& package) { return package.release(); });
    return array;
}

} // namespace zel::extensibility
