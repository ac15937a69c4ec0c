/* What a formatter plug-in offers: two exports, a dispatch record per formatter class, and the
 * services of an instance. */
#ifndef ZEL_FORMATTER_H
#define ZEL_FORMATTER_H

#include "zel/allocator.h"
#include "zel/package.h"
#include "zel/raw_package.h"
#include "zel/service_locator.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Names under which an instance's service locator offers the records below. */
#define ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE                              \
    "zel_formatter_raw_package_transformation_support_t"
#define ZEL_FORMATTER_DATA_SOURCE_BINDING_SERVICE_TYPE "zel_formatter_data_source_binding_t"

/* One formatter class. The record is valid until the library is unloaded. */
typedef struct zel_formatter_dispatch_table_t {
    const char* format_type; /* ZEL_FORMAT_TYPE_* of the raw packages that the class accepts */
    /* Stores a new instance in *instance; the host owns it and gives it to `destroy`.
     * `host_services` may be null; it and its services must remain valid until `destroy` returns.
     * They are looked up within this call, on its thread. Any thread. */
    zel_status_t (*create)(void** instance, const zel_service_locator_t* host_services,
                           zel_error_details_t** error);
    /* Deletes an instance that no other call is using; null does nothing. Stores no record. The
     * instance is gone in any case: a status other than 0 is for information only. Any thread. */
    zel_status_t (*destroy)(void* instance);
    /* Stores the instance's service locator in *target; it is valid as long as the instance. A null
     * instance stores null and is a success; a null `target` is a failure in any case. Any thread.
     */
    zel_status_t (*get_service_locator)(void* instance, const zel_service_locator_t** target,
                                        zel_error_details_t** error);
} zel_formatter_dispatch_table_t;

/* Service of an instance: raw packages in, packages out. */
typedef struct zel_formatter_raw_package_transformation_support_t {
    /* Decodes one borrowed raw package. On success *packages is the array from the allocator, which
     * may be null if *package_count is 0; the caller owns the array and each package in it. A raw
     * package that cannot be decoded is no failure. One thread; on that thread, the log function
     * may call it while another call is in progress. */
    zel_status_t (*transform)(void* instance, const zel_raw_package_t* raw_package,
                              zel_package_t*** packages, size_t* package_count,
                              const zel_allocator_t* allocator, zel_error_details_t** error);
} zel_formatter_raw_package_transformation_support_t;

/* The host's data source provider: 48 bytes that a plug-in copies and does not interpret. */
typedef struct zel_data_source_provider_t {
    void* host[6];
} zel_data_source_provider_t;

/* Service of an instance that can be told where its data come from. */
typedef struct zel_formatter_data_source_binding_t {
    /* Tells the instance where its data come from. `data_source` must outlive the instance;
     * `provider` is borrowed and copied; texts call it data_source_provider. May be called before
     * the first transformation or between two, and again; the last call counts. One thread. */
    zel_status_t (*bind)(void* instance, void* data_source,
                         const zel_data_source_provider_t* provider, zel_error_details_t** error);
} zel_formatter_data_source_binding_t;

ZEL_CHECK_OFFSET(zel_formatter_dispatch_table_t, format_type, 0);
ZEL_CHECK_OFFSET(zel_formatter_dispatch_table_t, create, 8);
ZEL_CHECK_OFFSET(zel_formatter_dispatch_table_t, destroy, 16);
ZEL_CHECK_OFFSET(zel_formatter_dispatch_table_t, get_service_locator, 24);
ZEL_CHECK_RECORD(zel_formatter_dispatch_table_t, 32, 8);
ZEL_CHECK_RECORD(zel_formatter_raw_package_transformation_support_t, 8, 8);
ZEL_CHECK_RECORD(zel_data_source_provider_t, 48, 8);
ZEL_CHECK_RECORD(zel_formatter_data_source_binding_t, 8, 8);

/* Called for each formatter class with its record and with the `context` of the enumeration;
 * returning false ends the enumeration. */
typedef bool (*zel_formatter_dispatch_table_callback_t)(
    const zel_formatter_dispatch_table_t* dispatch_table, void* context);

/* The two exports of a plug-in, by these names. */
#define ZEL_ENUM_FORMATTER_DISPATCH_TABLE_EXPORT "zel_enum_formatter_dispatch_table"
#define ZEL_RUNTIME_QUERY_METADATA_EXPORT "zel_runtime_query_metadata"

/* Calls `callback` for each formatter class of the library, always in the same order; a null
 * `callback` does nothing. Any thread. */
typedef void (*zel_enum_formatter_dispatch_table_t)(
    zel_formatter_dispatch_table_callback_t callback, void* context);

/* Returns the metadata text: lines of key=value, separated by single line feeds. It is valid until
 * the library is unloaded. Any thread. */
typedef const char* (*zel_runtime_query_metadata_t)(void);

#ifdef __cplusplus
}
#endif

#endif
