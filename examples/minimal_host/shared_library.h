/* A library loaded at run time, on either system. */
#ifndef MINIMAL_HOST_SHARED_LIBRARY_H
#define MINIMAL_HOST_SHARED_LIBRARY_H

typedef void (*any_function)(void);

/* Null, with the reason on standard error, when the file cannot be loaded. */
void* load_library(const char* file);

/* An exported function, to be cast to its own type; null if there is none of this name. */
any_function find_function(void* library, const char* name);

void unload_library(void* library);

#endif
