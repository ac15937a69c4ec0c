/* Output packages: created, typed and freed through the host; filled by the plug-in. */
#ifndef ZEL_PACKAGE_H
#define ZEL_PACKAGE_H

#include "zel/allocator.h"
#include "zel/error_details.h"
#include "zel/format_type.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Header of an output package, 63 bytes, little-endian, at any address; `size` bytes of data follow
 * it directly. The record is packed, so its members may be misaligned: access them by name, do not
 * take their addresses. A plug-in sets all members except `host_block`,
 * `size` and, in packages other than "zel.rtrange", `source_info_nibble`. */
#pragma pack(push, 1)
typedef struct zel_package_t {
    uint16_t source_id;
    uint16_t source_info;
    uint32_t source_info_nibble; /* set in "zel.rtrange" packages only; in others the host's */
    uint8_t host_block[16];      /* the host's own */
    uint8_t pass_through_block[16];
    uint64_t reference_timestamp;
    uint32_t reserved_48; /* set to 0 */
    uint16_t reserved_52; /* set to 0 */
    uint8_t reserved_54;  /* set to 0 */
    uint64_t size;        /* bytes of data; set by the host */
} zel_package_t;
#pragma pack(pop)

ZEL_CHECK_OFFSET(zel_package_t, source_id, 0);
ZEL_CHECK_OFFSET(zel_package_t, source_info, 2);
ZEL_CHECK_OFFSET(zel_package_t, source_info_nibble, 4);
ZEL_CHECK_OFFSET(zel_package_t, host_block, 8);
ZEL_CHECK_OFFSET(zel_package_t, pass_through_block, 24);
ZEL_CHECK_OFFSET(zel_package_t, reference_timestamp, 40);
ZEL_CHECK_OFFSET(zel_package_t, reserved_48, 48);
ZEL_CHECK_OFFSET(zel_package_t, reserved_52, 52);
ZEL_CHECK_OFFSET(zel_package_t, reserved_54, 54);
ZEL_CHECK_OFFSET(zel_package_t, size, 55);
ZEL_CHECK_RECORD(zel_package_t, 63, 1);

/* Stores a new package in *package: header of zeros, except for `size`, and uninitialised data. The
 * caller owns it and gives it to zel_package_destroy with the same allocator. Any thread. */
ZEL_API zel_status_t zel_package_create(const zel_allocator_t* allocator, size_t size,
                                        zel_package_t** package, zel_error_details_t** error);

/* As zel_package_create and zel_package_assign_format_type in one, with a copy of the `size` bytes
 * at `data`, which are borrowed. Any thread. */
ZEL_API zel_status_t zel_package_create_assign_data(const zel_allocator_t* allocator,
                                                    const char* format_type, const void* data,
                                                    size_t size, zel_package_t** package,
                                                    zel_error_details_t** error);

/* Sets the format type, one of ZEL_FORMAT_TYPE_*; the text is borrowed and copied. Where it is
 * kept is up to the host; the other members of the header and the data remain unchanged. After
 * a failure, the whole package is unchanged. A plug-in calls it once
 * for each package of zel_package_create. Any thread. */
ZEL_API zel_status_t zel_package_assign_format_type(zel_package_t* package, const char* format_type,
                                                    zel_error_details_t** error);

/* Frees the package; for a null package, does nothing and returns 0. `allocator` is the one that it
 * was created with. A plug-in passes a null `error` and ignores a failure. Any thread. */
ZEL_API zel_status_t zel_package_destroy(const zel_allocator_t* allocator, zel_package_t* package,
                                         zel_error_details_t** error);

#ifdef __cplusplus
}
#endif

#endif
