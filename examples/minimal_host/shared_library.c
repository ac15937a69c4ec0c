#include "shared_library.h"

#include <stdint.h>
#include <stdio.h>

#ifdef _WIN32

#include <windows.h>

void* load_library(const char* file) {
    const HMODULE library = LoadLibraryA(file);
    if (library == NULL)
        fprintf(stderr, "%s: Windows error %lu\n", file, GetLastError());
    return library;
}

any_function find_function(void* library, const char* name) {
    return (any_function)GetProcAddress(library, name);
}

void unload_library(void* library) {
    FreeLibrary(library);
}

#else

#include <dlfcn.h>

void* load_library(const char* file) {
    void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (library == NULL)
        fprintf(stderr, "%s\n", dlerror());
    return library;
}

any_function find_function(void* library, const char* name) {
    return (any_function)(uintptr_t)dlsym(library, name);
}

void unload_library(void* library) {
    dlclose(library);
}

#endif
