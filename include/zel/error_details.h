/* Error records: a code and a description, created and freed by the host's library alone. */
#ifndef ZEL_ERROR_DETAILS_H
#define ZEL_ERROR_DETAILS_H

#include "zel/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One error; only the host's library knows its content. */
typedef struct zel_error_details_t zel_error_details_t;

/* Codes of error records. A plug-in reports its own failures with any of them but ZEL_ERROR_NOTE;
 * it may use further codes, for example for errors of the operating system. A record with a code
 * other than ZEL_ERROR_NOTE is a failure, even with code 0. zel_raw_package_check_state_value is
 * different: there, no record or one with code 0 means a good state, and ZEL_ERROR_NOTE does not.
 */
#define ZEL_ERROR_NOTE UINT32_C(1)
#define ZEL_ERROR_FAILED UINT32_C(0xA0000FA5)
#define ZEL_ERROR_NOT_IMPLEMENTED UINT32_C(0xA0000FA1)
#define ZEL_ERROR_TIMED_OUT UINT32_C(0xA00005B4)
#define ZEL_ERROR_OUT_OF_MEMORY UINT32_C(0xA003000C)
#define ZEL_ERROR_FILE_EXISTS UINT32_C(0xA0030011)
#define ZEL_ERROR_INVALID_ARGUMENT UINT32_C(0xA0030016)

/* When a function of the host fails within a call into the plug-in, that call fails, too: with the
 * same code and text for TIMED_OUT, FILE_EXISTS and INVALID_ARGUMENT; with the same code and the
 * text "function not implemented" for NOT_IMPLEMENTED; with ZEL_ERROR_FAILED and the same text for
 * any other code, ZEL_ERROR_OUT_OF_MEMORY and 0 included. */

/* Stores a new record in *target, for the caller to own and to destroy. `description` is borrowed
 * and copied; it may be null, and an empty one is not null. `target` may be null: then there is no
 * record. Always returns `code`, also when memory runs out; a plug-in returns it as the status of
 * the failing call. Any thread. */
ZEL_API zel_status_t zel_error_details_create(zel_error_details_t** target, uint32_t code,
                                              const char* description);

/* The record's code. Any thread. */
ZEL_API uint32_t zel_error_details_get_code(const zel_error_details_t* error);

/* The record's description, valid as long as the record; null if it has none. Any thread. */
ZEL_API const char* zel_error_details_get_description(const zel_error_details_t* error);

/* Frees the record; null does nothing. Any thread. */
ZEL_API void zel_error_details_destroy(zel_error_details_t* error);

#ifdef __cplusplus
}
#endif

#endif
