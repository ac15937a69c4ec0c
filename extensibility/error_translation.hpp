// Errors across the host boundary: the host's error records become exceptions on the way in,
// exceptions become a status and an error record on the way out.
#pragma once

#include <cstdint>

#include "zel/error_details.h"

namespace zel::runtime {

/// As throw_if_failed, for a record that is not null.
void convert_error_record(zel_error_details_t*& error);

/// Converts a host's error record into an exception. A null pointer or code 1 throws nothing. In
/// every case the record is destroyed and `error` is set to null.
inline void throw_if_failed(zel_error_details_t*& error) {
    if (error != nullptr)
        convert_error_record(error);
}

/// Reports the exception being handled through `error` and returns the status for the host. Call it
/// only in a catch block.
zel_status_t report_current_exception(zel_error_details_t** error) noexcept;

/// The code of the exception being handled, for entry points without an error record. Call it only
/// in a catch block.
std::uint32_t code_of_current_exception() noexcept;

/// Throws std::invalid_argument "argument '<name>' was not initialized".
[[noreturn]] void throw_not_initialized(const char* name);

/// Calls throw_not_initialized if `argument` is null.
inline void check_argument(const void* argument, const char* name) {
    if (argument == nullptr)
        throw_not_initialized(name);
}

/// Runs the body of an entry point and converts its exceptions. Returns 0, or the status of the
/// exception that ended the body.
template <typename Body>
zel_status_t guarded(zel_error_details_t** error, Body&& body) noexcept {
    try {
        body();
        return 0;
    } catch (...) {
        return report_current_exception(error);
    }
}

} // namespace zel::runtime
