/* The host's logging service. */
#ifndef ZEL_LOG_H
#define ZEL_LOG_H

#include "zel/error_details.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Name under which the host's service locator offers a zel_log_t. */
#define ZEL_LOG_SERVICE_TYPE "zel_log_t"

/* Levels of log records. Their values are no order of severity: levels 200 and 300 report frames
 * that are dropped or decoded in part, level 400 a success. Filter by value, not by a threshold. */
#define ZEL_LOG_LEVEL_SKIPPED UINT32_C(200)   /* foreign, or not to be decoded */
#define ZEL_LOG_LEVEL_MALFORMED UINT32_C(300) /* a malformed or unusable frame */
#define ZEL_LOG_LEVEL_NOTABLE UINT32_C(400)   /* a new or changed address of a unit */

/* One log record; the record and all its texts are borrowed. */
typedef struct zel_log_info_t {
    uint32_t level;       /* one of ZEL_LOG_LEVEL_* */
    const char* message;  /* at most 1023 bytes */
    const char* module;   /* file name of the plug-in, without directory; not always ASCII */
    const char* file;     /* source file name, without directory */
    const char* function; /* fully qualified name */
    uint32_t line;
    uintptr_t reserved; /* 0 */
} zel_log_info_t;

/* The service itself. It must remain valid until all instances that found it are destroyed. */
typedef struct zel_log_t {
    /* Takes one record. A failure makes the call that logged fail. The function may call the
     * plug-in, even `transform` on the instance that is logging, but must not destroy that
     * instance. Any thread. */
    zel_status_t (*log)(void* handle, const zel_log_info_t* record, zel_error_details_t** error);
    void* handle; /* first argument of log; not null */
} zel_log_t;

ZEL_CHECK_OFFSET(zel_log_info_t, level, 0);
ZEL_CHECK_OFFSET(zel_log_info_t, message, 8);
ZEL_CHECK_OFFSET(zel_log_info_t, module, 16);
ZEL_CHECK_OFFSET(zel_log_info_t, file, 24);
ZEL_CHECK_OFFSET(zel_log_info_t, function, 32);
ZEL_CHECK_OFFSET(zel_log_info_t, line, 40);
ZEL_CHECK_OFFSET(zel_log_info_t, reserved, 48);
ZEL_CHECK_RECORD(zel_log_info_t, 56, 8);
ZEL_CHECK_OFFSET(zel_log_t, log, 0);
ZEL_CHECK_OFFSET(zel_log_t, handle, 8);
ZEL_CHECK_RECORD(zel_log_t, 16, 8);

#ifdef __cplusplus
}
#endif

#endif
