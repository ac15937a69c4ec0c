/* Error records: a code and a description, created and freed by the host alone. */
#ifndef ZEL_ERROR_DETAILS_H
#define ZEL_ERROR_DETAILS_H

#include "zel/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One error, opaque to everybody but the host. */
typedef struct zel_error_details_t zel_error_details_t;

/* Codes of error records. A plug-in reports its failures with those from ZEL_ERROR_FAILED on; other
 * codes occur, too, for example those of the operating system. */
#define ZEL_ERROR_NOTE UINT32_C(1) /* not a failure, although it comes in an error record */
#define ZEL_ERROR_FAILED UINT32_C(0xA0000FA5)
#define ZEL_ERROR_NOT_IMPLEMENTED UINT32_C(0xA0000FA1)
#define ZEL_ERROR_TIMED_OUT UINT32_C(0xA00005B4)
#define ZEL_ERROR_OUT_OF_MEMORY UINT32_C(0xA003000C)
#define ZEL_ERROR_FILE_EXISTS UINT32_C(0xA0030011)
#define ZEL_ERROR_INVALID_ARGUMENT UINT32_C(0xA0030016)

/* Stores a new record in *target; the caller owns it and gives it to zel_error_details_destroy.
 * `description` is borrowed and copied. Returns the status that the failing call has to return:
 * the code itself. Any thread. */
ZEL_API zel_status_t zel_error_details_create(zel_error_details_t** target, uint32_t code,
                                              const char* description);

/* The record's code; 1 is a note, not a failure. Any thread. */
ZEL_API uint32_t zel_error_details_get_code(const zel_error_details_t* error);

/* The record's description, owned by the record; null if it has none. Any thread. */
ZEL_API const char* zel_error_details_get_description(const zel_error_details_t* error);

/* Frees the record; null does nothing. Any thread. */
ZEL_API void zel_error_details_destroy(zel_error_details_t* error);

#ifdef __cplusplus
}
#endif

#endif
