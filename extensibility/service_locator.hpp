// The host's services, looked up by type name.
#pragma once

#include <memory>
#include <string>

#include "zel/service_locator.h"

namespace zel::runtime {

/// Wraps the host's service-locator record, which is borrowed and may be null.
class service_locator : public std::enable_shared_from_this<service_locator> {
public:
    explicit service_locator(const zel_service_locator_t* host);
    virtual ~service_locator() = default;
    service_locator(const service_locator&) = delete;
    service_locator& operator=(const service_locator&) = delete;

    /// Whether the host offers the service; false without a record or a function to ask. Throws
    /// what the host's error record says.
    virtual bool can_resolve(const std::string& service_type);

    /// Stores the service's record in *target; leaves it alone without a record or a function to
    /// ask. Throws what the host's error record says.
    virtual void resolve(const std::string& service_type, void** target);

private:
    const zel_service_locator_t* host_;
};

} // namespace zel::runtime
