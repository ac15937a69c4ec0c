/* Raw packages: what the host recorded, read-only to a plug-in. */
#ifndef ZEL_RAW_PACKAGE_H
#define ZEL_RAW_PACKAGE_H

#include "zel/error_details.h"
#include "zel/format_type.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Header of a raw package, 68 bytes, little-endian, at any address; `size` bytes of data follow it
 * directly. Bits 8 to 11 of `source_info` form the source-info nibble. The record is packed, so
 * its members may be misaligned: access them by name, do not take their addresses. */
#pragma pack(push, 1)
typedef struct zel_raw_package_t {
    uint16_t source_id;
    uint16_t source_info;
    uint8_t host_4[16]; /* the host's own; a plug-in does not read host_* */
    uint32_t state_value;
    uint8_t pass_through_block[16];
    uint8_t host_40[8];
    uint64_t reference_timestamp; /* the host's time, in any unit */
    uint8_t host_56[4];
    uint64_t size; /* bytes of data */
} zel_raw_package_t;
#pragma pack(pop)

ZEL_CHECK_OFFSET(zel_raw_package_t, source_id, 0);
ZEL_CHECK_OFFSET(zel_raw_package_t, source_info, 2);
ZEL_CHECK_OFFSET(zel_raw_package_t, host_4, 4);
ZEL_CHECK_OFFSET(zel_raw_package_t, state_value, 20);
ZEL_CHECK_OFFSET(zel_raw_package_t, pass_through_block, 24);
ZEL_CHECK_OFFSET(zel_raw_package_t, host_40, 40);
ZEL_CHECK_OFFSET(zel_raw_package_t, reference_timestamp, 48);
ZEL_CHECK_OFFSET(zel_raw_package_t, host_56, 56);
ZEL_CHECK_OFFSET(zel_raw_package_t, size, 60);
ZEL_CHECK_RECORD(zel_raw_package_t, 68, 1);

/* Checks the state of a raw package. Only the record counts, not the status: none, or one with code
 * 0, means a good state; any other code, ZEL_ERROR_NOTE included, means that the raw package is to
 * be dropped. A description that is not empty is logged in any case, as a printf format without
 * arguments: write a percent sign as "%%". Any thread. */
ZEL_API zel_status_t zel_raw_package_check_state_value(uint32_t state_value, uint16_t source_id,
                                                       uint32_t source_info_nibble,
                                                       zel_error_details_t** error);

#ifdef __cplusplus
}
#endif

#endif
