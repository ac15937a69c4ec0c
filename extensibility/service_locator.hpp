// The host's services, looked up by type name.
#pragma once

#include <memory>
#include <string>

#include "zel/service_locator.h"

namespace zel::runtime {

/// Wraps the host's service locator record, which must outlive the wrapper and may be null.
class service_locator : public std::enable_shared_from_this<service_locator> {
public:
    explicit service_locator(const zel_service_locator_t* host);
    virtual ~service_locator() = default;
    service_locator(const service_locator&) = delete;
    service_locator& operator=(const service_locator&) = delete;

    /// Whether the host offers the service; false if the record or its function is null. Throws the
    /// exception for the host's error record.
    virtual bool can_resolve(const std::string& service_type);

    /// Stores the service's record in *target; leaves *target unchanged if the record or its
    /// function is null. Throws the exception for the host's error record.
    virtual void resolve(const std::string& service_type, void** target);

private:
    const zel_service_locator_t* host_;
};

} // namespace zel::runtime
