/* The host's interface, seen from C: it compiles, and its layouts are what hosts were built for. */

#include <assert.h>

#include "zel/allocator.h"
#include "zel/error_details.h"
#include "zel/formatter.h"
#include "zel/log.h"
#include "zel/package.h"
#include "zel/raw_package.h"
#include "zel/service_locator.h"

#define AT(record, field, offset) static_assert(offsetof(record, field) == (offset), #field)
#define SIZE(record, size) static_assert(sizeof(record) == (size), #record)

AT(zel_package_t, source_id, 0);
AT(zel_package_t, source_info, 2);
AT(zel_package_t, source_info_nibble, 4);
AT(zel_package_t, host_block, 8);
AT(zel_package_t, pass_through_block, 24);
AT(zel_package_t, reference_timestamp, 40);
AT(zel_package_t, reserved_48, 48);
AT(zel_package_t, reserved_52, 52);
AT(zel_package_t, reserved_54, 54);
AT(zel_package_t, size, 55);
SIZE(zel_package_t, 63);

AT(zel_raw_package_t, source_id, 0);
AT(zel_raw_package_t, source_info, 2);
AT(zel_raw_package_t, state_value, 20);
AT(zel_raw_package_t, pass_through_block, 24);
AT(zel_raw_package_t, reference_timestamp, 48);
AT(zel_raw_package_t, size, 60);
SIZE(zel_raw_package_t, 68);

AT(zel_allocator_t, allocate_array, 3 * 8);
AT(zel_allocator_t, context, 6 * 8);
SIZE(zel_allocator_t, 7 * 8);

AT(zel_service_locator_t, resolve, 0);
AT(zel_service_locator_t, can_resolve, 8);
AT(zel_service_locator_t, handle, 16);

AT(zel_log_t, log, 0);
AT(zel_log_t, handle, 8);
AT(zel_log_info_t, level, 0);
AT(zel_log_info_t, message, 8);
AT(zel_log_info_t, module, 16);
AT(zel_log_info_t, file, 24);
AT(zel_log_info_t, function, 32);
AT(zel_log_info_t, line, 40);
AT(zel_log_info_t, reserved, 48);

AT(zel_formatter_dispatch_table_t, format_type, 0);
AT(zel_formatter_dispatch_table_t, create, 8);
AT(zel_formatter_dispatch_table_t, destroy, 16);
AT(zel_formatter_dispatch_table_t, get_service_locator, 24);
SIZE(zel_data_source_provider_t, 48);
