/* The allocator that the host passes into each transformation. */
#ifndef ZEL_ALLOCATOR_H
#define ZEL_ALLOCATOR_H

#include "zel/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Seven pointer-sized fields; those named host_* belong to the host and are never looked at. */
typedef struct zel_allocator_t {
    void* host_1;
    void* host_2;
    void* host_3;
    /* Gives `count` elements of `element_size` bytes, or null when there is no memory. The array
     * passes to the caller of the transformation. Also called with a count of 0. */
    void* (*allocate_array)(size_t count, size_t element_size, void* context);
    void* host_5;
    void* host_6;
    void* context; /* passed back as the last argument of allocate_array */
} zel_allocator_t;

#ifdef __cplusplus
}
#endif

#endif
