/* The allocator that the host passes into each transformation. */
#ifndef ZEL_ALLOCATOR_H
#define ZEL_ALLOCATOR_H

#include "zel/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A plug-in calls `allocate_array` and passes the whole record to zelc; it accesses no member
 * host_*. What those mean is agreed between the host and its zelc; the reference zelc uses none of
 * them, so that they may be null. The record must remain valid until the packages created with it
 * are destroyed. */
typedef struct zel_allocator_t {
    void* host_1;
    void* host_2;
    void* host_3;
    /* Returns uninitialised memory for `count` elements of `element_size` bytes, aligned like that
     * of malloc, or null if there is none. It belongs to the caller of the transformation. Must not
     * be a null pointer: it is called with a count of 0, too, and may then return null. Any
     * thread. */
    void* (*allocate_array)(size_t count, size_t element_size, void* context);
    void* host_5;
    void* host_6;
    void* context; /* last argument of allocate_array; may be null */
} zel_allocator_t;

ZEL_CHECK_OFFSET(zel_allocator_t, allocate_array, 24);
ZEL_CHECK_OFFSET(zel_allocator_t, context, 48);
ZEL_CHECK_RECORD(zel_allocator_t, 56, 8);

#ifdef __cplusplus
}
#endif

#endif
