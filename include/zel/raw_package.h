/* Raw packages: what the host recorded, read-only to a plug-in. */
#ifndef ZEL_RAW_PACKAGE_H
#define ZEL_RAW_PACKAGE_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Header of a raw package, 68 bytes, little-endian; `size` bytes of data follow it directly. Bits 8
 * to 11 of `source_info` form the source-info nibble. */
#pragma pack(push, 1)
typedef struct zel_raw_package_t {
    uint16_t source_id;
    uint16_t source_info;
    uint8_t host_4[16];
    uint32_t state_value;
    uint8_t pass_through_block[16];
    uint8_t host_40[8];
    uint64_t reference_timestamp; /* the host's time base; rtrange uses nanoseconds since 1970 */
    uint8_t host_56[4];
    uint64_t size; /* bytes of data */
} zel_raw_package_t;
#pragma pack(pop)

/* Judges the state of a raw package. The verdict is in *error alone: null or code 0 is good, and
 * a description is worth a log record in either case. The caller owns *error. Any thread. */
ZEL_API zel_status_t zel_raw_package_check_state_value(uint32_t state_value, uint16_t source_id,
                                                       uint32_t source_info_nibble,
                                                       zel_error_details_t** error);

#ifdef __cplusplus
}
#endif

#endif
