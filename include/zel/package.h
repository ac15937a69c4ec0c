/* Output packages: created, typed and freed through the host; filled by the plug-in. */
#ifndef ZEL_PACKAGE_H
#define ZEL_PACKAGE_H

#include "zel/allocator.h"
#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Header of an output package, 63 bytes; `size` bytes of data follow it directly. The only place
 * that knows this layout: a port to another host changes it here. */
#pragma pack(push, 1)
typedef struct zel_package_t {
    uint16_t source_id;
    uint16_t source_info;
    uint32_t source_info_nibble;
    uint8_t host_block[16]; /* the host's own; never written by a plug-in */
    uint8_t pass_through_block[16];
    uint64_t reference_timestamp;
    uint32_t reserved_48; /* 0 */
    uint16_t reserved_52; /* 0 */
    uint8_t reserved_54;  /* 0 */
    uint64_t size;        /* bytes of data, set by the host */
} zel_package_t;
#pragma pack(pop)

/* Stores a new package with `size` bytes of uninitialised data in *package; the caller owns it
 * and gives it to zel_package_destroy with the same allocator. A failure leaves *package alone. Any
 * thread. */
ZEL_API zel_status_t zel_package_create(const zel_allocator_t* allocator, size_t size,
                                        zel_package_t** package, zel_error_details_t** error);

/* As zel_package_create and zel_package_assign_format_type in one, with a copy of the `size`
 * bytes at `data`, which are borrowed. Any thread. */
ZEL_API zel_status_t zel_package_create_assign_data(const zel_allocator_t* allocator,
                                                    const char* format_type, const void* data,
                                                    size_t size, zel_package_t** package,
                                                    zel_error_details_t** error);

/* Sets the identifier of the data's format, for example "zel.rtrange"; `format_type` is borrowed
 * and copied. A failure leaves the package as it was. Any thread. */
ZEL_API zel_status_t zel_package_assign_format_type(zel_package_t* package, const char* format_type,
                                                    zel_error_details_t** error);

/* Frees the package. `error` may be null. Any thread. */
ZEL_API zel_status_t zel_package_destroy(const zel_allocator_t* allocator, zel_package_t* package,
                                         zel_error_details_t** error);

#ifdef __cplusplus
}
#endif

#endif
