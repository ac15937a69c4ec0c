// A plug-in that has the two exports and keeps neither promise; the host has to notice.

#include "zel/formatter.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT const char* zel_runtime_query_metadata();
EXPORT void zel_enum_formatter_dispatch_table(zel_formatter_dispatch_table_callback_t, void*);

const char* zel_runtime_query_metadata() {
    return nullptr;
}

void zel_enum_formatter_dispatch_table(zel_formatter_dispatch_table_callback_t callback,
                                       void* context) {
    callback(nullptr, context);
}
