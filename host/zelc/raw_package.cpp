#include "zel/raw_package.h"

#include <cstdint>
#include <cstdio>

/// This host treats every state except 0 as an error.
extern "C" zel_status_t zel_raw_package_check_state_value(std::uint32_t state_value,
                                                          std::uint16_t source_id, std::uint32_t,
                                                          zel_error_details_t** error) {
    if (state_value == 0)
        return 0;
    char description[64];
    std::snprintf(description, sizeof(description), "raw package of source %u has state 0x%08X",
                  unsigned{source_id}, static_cast<unsigned>(state_value));
    return zel_error_details_create(error, ZEL_ERROR_FAILED, description);
}
