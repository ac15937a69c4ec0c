// The service through which the host binds a formatter to a data source.
#pragma once

#include <memory>

#include "extensibility/enable_service_locator.hpp"
#include "extensibility/error_translation.hpp"
#include "zel/formatter.h"

namespace zel::extensibility::transform {

/// The host's data source; its content is not accessed.
struct data_source {
    void* handle;
};

/// Base of a formatter class T that can be bound to a data source.
template <typename T>
class enable_data_source_binding {
public:
    /// Offers the binding service through `services`, which must outlive this object.
    explicit enable_data_source_binding(enable_service_locator& services)
        : binding_{&enable_data_source_binding::bind}, services_(services) {
        services_.register_service(ZEL_FORMATTER_DATA_SOURCE_BINDING_SERVICE_TYPE,
                                   [this](void** target) { *target = &binding_; });
    }

    virtual ~enable_data_source_binding() {
        services_.unregister_service(ZEL_FORMATTER_DATA_SOURCE_BINDING_SERVICE_TYPE);
    }
    enable_data_source_binding(const enable_data_source_binding&) = delete;
    enable_data_source_binding& operator=(const enable_data_source_binding&) = delete;

    /// Called when the host binds the instance.
    virtual void bind(const data_source& source,
                      const std::shared_ptr<const zel_data_source_provider_t>& provider) = 0;

private:
    static zel_status_t bind(void* handle, void* source, const zel_data_source_provider_t* provider,
                             zel_error_details_t** error) {
        return runtime::guarded(error, [&] {
            runtime::check_argument(handle, "handle");
            runtime::check_argument(source, "data_source");
            runtime::check_argument(provider, "data_source_provider");
            enable_data_source_binding& instance = *static_cast<T*>(handle);
            instance.bind(data_source{source},
                          std::make_shared<const zel_data_source_provider_t>(*provider));
        });
    }

    zel_formatter_data_source_binding_t binding_;
    enable_service_locator& services_;
};

} // namespace zel::extensibility::transform
