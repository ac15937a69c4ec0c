/* Error records: a code and a description, created and freed by the host alone. */
#ifndef ZEL_ERROR_DETAILS_H
#define ZEL_ERROR_DETAILS_H

#include "zel/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One error, opaque to everybody but the host. */
typedef struct zel_error_details_t zel_error_details_t;

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
