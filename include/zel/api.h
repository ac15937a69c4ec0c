/* Shared by all headers of the host's C interface. */

/* clang-format off */
/* Words used in the contracts of this folder:
 *   borrowed     valid only during the call; the callee neither keeps nor frees it
 *   failure      a status other than 0, with a record in *error that describes it. A host evaluates
 *                the status. A plug-in evaluates the record alone: a failing function of the host
 *                must store one, or else the failure counts as success
 *   *error       null before the call; a failure stores a record in it, which the caller owns.
 *                With a null `error`, the caller gets no record. When memory runs out, a failure
 *                may come without a record
 *   note         a record with the code ZEL_ERROR_NOTE and status 0: a success. The caller destroys
 *                it like any other record
 *   any thread   may be called from several threads at once
 *   one thread   one call at a time per instance; the thread may change from call to call
 *
 * They hold for all functions, unless a contract says otherwise:
 *   - Pointers are not null. A plug-in checks the arguments of its own functions and reports a null
 *     pointer as ZEL_ERROR_INVALID_ARGUMENT.
 *   - A failing function leaves its targets, except *error, as they were.
 *   - No function throws a C++ exception, neither the host's nor the plug-in's.
 *   - The functions of the host do not call the instance that called them; the log may.
 *   - Texts end with a zero byte. Those of the interface and of a plug-in are ASCII, except for
 *     parts that came from the host.
 */
/* clang-format on */
#ifndef ZEL_API_H
#define ZEL_API_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* Raised with each change of a header in this folder. The metadata of a plug-in that was built with
 * version N contains the line zel-sdk-version=0.N.<patch>-<revision>; a host compares N with its
 * own. A service, export or function of zelc that changes also gets a new name, so that neither
 * side finds one that it does not know. */
#define ZEL_INTERFACE_VERSION 3

/* The functions marked ZEL_API are exported by the host's shared library (zelc.dll, libzelc.so).
 * Only the build of that library itself defines ZEL_BUILDS_ZELC. */
#if defined(_WIN32) && defined(ZEL_BUILDS_ZELC)
#define ZEL_API __declspec(dllexport)
#elif defined(_WIN32)
#define ZEL_API __declspec(dllimport)
#elif defined(__GNUC__)
#define ZEL_API __attribute__((visibility("default")))
#else
#define ZEL_API
#endif

/* Checks of the layout that both sides rely on, at compile time. */
#if defined(__cplusplus)
#define ZEL_STATIC_ASSERT(condition, message) static_assert(condition, message)
#define ZEL_ALIGNMENT_OF(type) alignof(type)
#else
#define ZEL_STATIC_ASSERT(condition, message) _Static_assert(condition, message)
#define ZEL_ALIGNMENT_OF(type) _Alignof(type)
#endif
#define ZEL_CHECK_OFFSET(record, member, offset)                                                   \
    ZEL_STATIC_ASSERT(offsetof(record, member) == (offset), #record "." #member " is misplaced")
#define ZEL_CHECK_RECORD(record, size, alignment)                                                  \
    ZEL_STATIC_ASSERT(sizeof(record) == (size) && ZEL_ALIGNMENT_OF(record) == (alignment),         \
                      #record " has another layout; is it inside #pragma pack?")

ZEL_STATIC_ASSERT(sizeof(void*) == 8, "the interface needs pointers of 64 bits");

/* 0 is success, anything else a failure; its value is the code of the error record. */
typedef uint32_t zel_status_t;

#endif
