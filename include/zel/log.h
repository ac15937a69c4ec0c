/* The host's logging service. */
#ifndef ZEL_LOG_H
#define ZEL_LOG_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Name under which the host's service locator offers a zel_log_t. */
#define ZEL_LOG_SERVICE_TYPE "zel_log_t"

/* Levels of log records; the host filters. */
#define ZEL_LOG_LEVEL_SKIPPED UINT32_C(200)   /* a frame that is not for the decoder */
#define ZEL_LOG_LEVEL_MALFORMED UINT32_C(300) /* a malformed or unusable frame, dropped */
#define ZEL_LOG_LEVEL_NOTABLE UINT32_C(400)   /* a one-time event */

/* One log record; it and all its texts are borrowed. */
typedef struct zel_log_info_t {
    uint32_t level;       /* one of ZEL_LOG_LEVEL_* */
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
