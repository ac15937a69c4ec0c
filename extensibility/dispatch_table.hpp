// The dispatch record of a formatter class.
#pragma once

#include <cstdint>
#include <memory>

#include "extensibility/error_translation.hpp"
#include "extensibility/format_type.hpp"
#include "extensibility/service_locator.hpp"
#include "zel/formatter.h"

namespace zel::extensibility::transform {

template <typename T>
zel_status_t create(void** instance, const zel_service_locator_t* host_services,
                    zel_error_details_t** error) {
    return runtime::guarded(error, [&] {
        runtime::check_argument(instance, "instance");
        *instance = new T(std::make_shared<runtime::service_locator>(host_services));
    });
}

/// Creates no error record: returns the code of an exception only.
template <typename T>
zel_status_t destroy(void* instance) {
    try {
        delete static_cast<T*>(instance);
        return 0;
    } catch (...) {
        return runtime::code_of_current_exception();
    }
}

template <typename T>
zel_status_t get_service_locator(void* instance, const zel_service_locator_t** target,
                                 zel_error_details_t** error) {
    return runtime::guarded(error, [&] {
        runtime::check_argument(target, "target");
        *target =
            instance != nullptr ? static_cast<T*>(instance)->service_locator_record() : nullptr;
    });
}

/// The dispatch record of formatter class T, which accepts raw packages of the format family with
/// this code.
template <typename T>
zel_formatter_dispatch_table_t dispatch_table(std::uint16_t format_type_code) {
    return {format_type_identifier(format_type_code), &create<T>, &destroy<T>,
            &get_service_locator<T>};
}

} // namespace zel::extensibility::transform
