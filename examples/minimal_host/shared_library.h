/* A library loaded at run time, on Linux or Windows. */
#ifndef MINIMAL_HOST_SHARED_LIBRARY_H
#define MINIMAL_HOST_SHARED_LIBRARY_H

typedef void (*any_function)(void);

/* Returns null, after a message on standard error, when the file cannot be loaded. */
void* load_library(const char* file);

/* An exported function, to be cast to its real type; null if there is none of this name. */
any_function find_function(void* library, const char* name);

void unload_library(void* library);

#endif
