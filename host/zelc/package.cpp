// This host allocates a package as one block with malloc, for any allocator, and stores its format
// type in the 16 bytes of the header that belong to the host.

#include "zel/package.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" zel_status_t zel_package_create(const zel_allocator_t*, std::size_t size,
                                           zel_package_t** package, zel_error_details_t** error) {
    if (package == nullptr)
        return zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                        "argument 'package' was not initialized");
    if (size > SIZE_MAX - sizeof(zel_package_t))
        return zel_error_details_create(error, ZEL_ERROR_OUT_OF_MEMORY, "memory allocation failed");
    auto* const created = static_cast<zel_package_t*>(std::malloc(sizeof(zel_package_t) + size));
    if (created == nullptr)
        return zel_error_details_create(error, ZEL_ERROR_OUT_OF_MEMORY, "memory allocation failed");
    std::memset(created, 0, sizeof(zel_package_t));
    created->size = size;
    *package = created;
    return 0;
}

extern "C" zel_status_t zel_package_create_assign_data(const zel_allocator_t* allocator,
                                                       const char* format_type, const void* data,
                                                       std::size_t size, zel_package_t** package,
                                                       zel_error_details_t** error) {
    if (data == nullptr && size != 0)
        return zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                        "argument 'data' was not initialized");
    zel_package_t* created = nullptr;
    zel_status_t status = zel_package_create(allocator, size, &created, error);
    if (created == nullptr)
        return status;
    status = zel_package_assign_format_type(created, format_type, error);
    if (status != 0 || package == nullptr) {
        zel_package_destroy(allocator, created, nullptr);
        return status != 0 ? status
                           : zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                                      "argument 'package' was not initialized");
    }
    if (size != 0)
        std::memcpy(created + 1, data, size);
    *package = created;
    return 0;
}

extern "C" zel_status_t zel_package_assign_format_type(zel_package_t* package,
                                                       const char* format_type,
                                                       zel_error_details_t** error) {
    if (package == nullptr)
        return zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                        "argument 'package' was not initialized");
    if (format_type == nullptr)
        return zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                        "argument 'format_type' was not initialized");
    const std::size_t text_size = std::strlen(format_type) + 1;
    if (text_size > sizeof(package->host_block))
        return zel_error_details_create(error, ZEL_ERROR_INVALID_ARGUMENT,
                                        "format type has more than 15 characters");
    std::memcpy(package->host_block, format_type, text_size);
    return 0;
}

extern "C" zel_status_t zel_package_destroy(const zel_allocator_t*, zel_package_t* package,
                                            zel_error_details_t**) {
    std::free(package);
    return 0;
}
