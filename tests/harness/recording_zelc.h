/* A host library that keeps accounts and fails on demand. It takes zelc's place in the tests. */
#ifndef RECORDING_ZELC_H
#define RECORDING_ZELC_H

#include "zel/package.h"
#include "zel/raw_package.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How a host call fails. */
typedef enum recording_failure_t {
    RECORDING_BY_ERROR,         /* error record, code 0xA0030011, description "host failure" */
    RECORDING_BY_STALE_POINTER, /* the same, and a pointer to a package that is freed already */
    RECORDING_BY_NOTHING        /* success without a package; other calls fail by error */
} recording_failure_t;

typedef struct recording_zelc_t {
    /* Accounts of what the plug-in was given and has not given back. */
    int live_packages;
    int live_errors;
    /* Calls whose error target was not null at their start. */
    int unclean_error_targets;
    /* Format types assigned to packages whose header was not filled yet. */
    int early_format_types;

    /* Failing calls: package creation, with or without data, and format assignment count as one
     * sequence; the call with this number, from 1, fails; 0 fails none. */
    unsigned calls;
    unsigned failing_call;
    recording_failure_t failure;
    /* Every one of these calls also gives an error record with code 1, which is no failure. */
    bool notes;

    /* What the next state checks give: a record with this code and description, unless
     * `state_record` is false. */
    bool state_record;
    uint32_t state_code;
    const char* state_description;
    /* Arguments of the last state check. */
    uint32_t checked_state_value;
    uint16_t checked_source_id;
    uint32_t checked_nibble;
} recording_zelc_t;

/* The library's one record. */
ZEL_API recording_zelc_t* recording_zelc(void);

/* Format type of a live package, and whether its host block is as the host filled it. */
ZEL_API const char* recording_format_type(const zel_package_t* package);
ZEL_API bool recording_host_block_untouched(const zel_package_t* package);

#ifdef __cplusplus
}
#endif

#endif
