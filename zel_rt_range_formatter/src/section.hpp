// Places data in a named section of the library.
#pragma once

#if defined(_MSC_VER)
#pragma section(".tirel", read, write)
#pragma section(".zelrt", read)
#define ZEL_IN_SECTION(name) __declspec(allocate(name))
#else
#define ZEL_IN_SECTION(name) __attribute__((section(name), used))
#endif
