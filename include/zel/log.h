/* The host's logging service. */
#ifndef ZEL_LOG_H
#define ZEL_LOG_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Name under which the host's service locator offers a zel_log_t. */
#define ZEL_LOG_SERVICE_TYPE "zel_log_t"

/* One log record; it and all its texts are borrowed. */
typedef struct zel_log_info_t {
    uint32_t level;       /* 200 skipped traffic, 300 malformed frame, 400 notable event */
    const char* message;  /* at most 1023 characters */
    const char* module;   /* file name of the plug-in, without directory */
    const char* file;     /* source file name, without directory */
    const char* function; /* fully qualified name */
    uint32_t line;
    uintptr_t reserved; /* 0 */
} zel_log_info_t;

/* The service itself; the host keeps it as long as the instances that found it. */
typedef struct zel_log_t {
    /* Takes one record. A failure ends the plug-in's call that logged. The caller owns *error.
     * Any thread, if instances run on several. */
    zel_status_t (*log)(void* handle, const zel_log_info_t* record, zel_error_details_t** error);
    void* handle; /* first argument of log; not null */
} zel_log_t;

#ifdef __cplusplus
}
#endif

#endif
