/* Services by name: the host offers some to a plug-in's instances, each instance some to the host.
 */
#ifndef ZEL_SERVICE_LOCATOR_H
#define ZEL_SERVICE_LOCATOR_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A host that offers no service may leave `can_resolve` null, and then `resolve`, too. */
typedef struct zel_service_locator_t {
    /* Stores the address of the service's record in *target; it is valid as long as its owner, and
     * the caller does not write to it. An unknown name is a failure. Any thread. */
    zel_status_t (*resolve)(void* handle, const char* service_type, void** target,
                            zel_error_details_t** error);
    /* Stores in *can_resolve whether `resolve` knows the name. Any thread. */
    zel_status_t (*can_resolve)(void* handle, const char* service_type, bool* can_resolve,
                                zel_error_details_t** error);
    void* handle; /* first argument of both functions; that of a host may be null */
} zel_service_locator_t;

ZEL_CHECK_OFFSET(zel_service_locator_t, resolve, 0);
ZEL_CHECK_OFFSET(zel_service_locator_t, can_resolve, 8);
ZEL_CHECK_OFFSET(zel_service_locator_t, handle, 16);
ZEL_CHECK_RECORD(zel_service_locator_t, 24, 8);
ZEL_STATIC_ASSERT(sizeof(bool) == 1, "the interface needs a bool of one byte");

#ifdef __cplusplus
}
#endif

#endif
