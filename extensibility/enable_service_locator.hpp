// The services that an instance offers to the host.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>

#include "zel/service_locator.h"

namespace zel::extensibility {

/// Base class of an object that offers services to the host by type name. The map of services
/// changes only during construction and destruction.
class enable_service_locator {
public:
    /// Stores the address of the service record in its argument.
    using service_provider = std::function<void(void**)>;

    enable_service_locator();
    virtual ~enable_service_locator() = default;
    enable_service_locator(const enable_service_locator&) = delete;
    enable_service_locator& operator=(const enable_service_locator&) = delete;

    /// Offers a service. A name that is already registered keeps its first provider.
    void register_service(const char* service_type, const service_provider& provider);

    /// Withdraws a service; ignores an unknown name. Intended for destructors.
    void unregister_service(const char* service_type) noexcept;

    /// The record through which the host looks up services; valid for the lifetime of the object.
    const zel_service_locator_t* service_locator_record() const { return &record_; }

private:
    static zel_status_t resolve(void* handle, const char* service_type, void** target,
                                zel_error_details_t** error);
    static zel_status_t can_resolve(void* handle, const char* service_type, bool* can_resolve,
                                    zel_error_details_t** error);

    zel_service_locator_t record_;
    std::unordered_map<std::string, service_provider> services_;
};

} // namespace zel::extensibility
