#include "services.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "zel/log.h"

static zel_status_t write_log(void* handle, const zel_log_info_t* record,
                              zel_error_details_t** error) {
    if (fprintf(handle, "log %u: %s\n", (unsigned)record->level, record->message) < 0)
        return zel_error_details_create(error, ZEL_ERROR_FAILED, "the log cannot be written");
    return 0;
}

static zel_status_t can_resolve(void* handle, const char* service_type, bool* result,
                                zel_error_details_t** error) {
    (void)handle;
    (void)error;
    *result = strcmp(service_type, ZEL_LOG_SERVICE_TYPE) == 0;
    return 0;
}

static zel_status_t resolve(void* handle, const char* service_type, void** target,
                            zel_error_details_t** error) {
    if (strcmp(service_type, ZEL_LOG_SERVICE_TYPE) != 0)
        return zel_error_details_create(error, ZEL_ERROR_FAILED,
                                        "this host has no service but a log");
    *target = handle;
    return 0;
}

static void* allocate_array(size_t count, size_t element_size, void* context) {
    (void)context;
    return calloc(count, element_size);
}

const zel_allocator_t host_allocator = {.allocate_array = allocate_array};

const zel_service_locator_t* host_services(void) {
    static zel_log_t log;
    static const zel_service_locator_t locator = {resolve, can_resolve, &log};
    log = (zel_log_t){write_log, stderr};
    return &locator;
}
