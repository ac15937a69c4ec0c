/* Services by name: the host offers some to a plug-in's instances, each instance some to the host.
 */
#ifndef ZEL_SERVICE_LOCATOR_H
#define ZEL_SERVICE_LOCATOR_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A side that offers nothing may leave a function null. */
typedef struct zel_service_locator_t {
    /* Stores the service's record in *target; it lives as long as its owner. An unknown name is an
     * error and leaves *target alone. The caller owns *error. One thread. */
    zel_status_t (*resolve)(void* handle, const char* service_type, void** target,
                            zel_error_details_t** error);
    /* Tells in *can_resolve whether `resolve` knows the name. The caller owns *error. One thread.
     */
    zel_status_t (*can_resolve)(void* handle, const char* service_type, bool* can_resolve,
                                zel_error_details_t** error);
    void* handle; /* first argument of both functions */
} zel_service_locator_t;

#ifdef __cplusplus
}
#endif

#endif
