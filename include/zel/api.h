/* Shared by all headers of the host's C interface. */

/* clang-format off */
/* Words used in the contracts of this folder:
 *   borrowed     valid for the duration of the call only; the callee neither keeps nor frees it
 *   status       0 is success; any other value is a failure, described by the record in *error if
 *                there is one and there was memory for it. Success may bring a record, too: one
 *                with code 1 is a note
 *   *error       null before the call; the caller owns what it holds afterwards. A caller that
 *                passes a null `error` gets no record
 *   any thread   may be called at any time, from several threads at once
 *   one thread   may be called from one thread at a time per instance
 */
/* clang-format on */
#ifndef ZEL_API_H
#define ZEL_API_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* The functions marked ZEL_API live in the host's shared library (zelc.dll, libzelc.so). Only the
 * build of that library itself defines ZEL_BUILDS_ZELC. */
#if defined(_WIN32) && defined(ZEL_BUILDS_ZELC)
#define ZEL_API __declspec(dllexport)
#elif defined(_WIN32)
#define ZEL_API __declspec(dllimport)
#elif defined(__GNUC__)
#define ZEL_API __attribute__((visibility("default")))
#else
#define ZEL_API
#endif

/* Result of every call across the boundary: 0 is success, anything else one of the host's codes. */
typedef uint32_t zel_status_t;

#endif
