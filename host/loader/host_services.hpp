// Services of this host for the instances of a plug-in.
#pragma once

#include <functional>

#include "zel/log.h"
#include "zel/service_locator.h"

namespace zel::host {

/// Takes one log record, which is valid during the call. An exception is reported to the plug-in as
/// a failure.
using log_sink = std::function<void(const zel_log_info_t&)>;

/// The host's service locator, with the service "zel_log_t". Must outlive the instances that use
/// it.
class host_services {
public:
    /// Every log record of an instance goes to `sink`, on the thread that drives the instance.
    explicit host_services(log_sink sink);
    host_services(const host_services&) = delete;
    host_services& operator=(const host_services&) = delete;

    const zel_service_locator_t* locator() const { return &locator_; }

private:
    static zel_status_t resolve(void* handle, const char* service_type, void** target,
                                zel_error_details_t** error);
    static zel_status_t can_resolve(void* handle, const char* service_type, bool* can_resolve,
                                    zel_error_details_t** error);
    static zel_status_t log(void* handle, const zel_log_info_t* record,
                            zel_error_details_t** error);

    log_sink sink_;
    zel_log_t log_;
    zel_service_locator_t locator_;
};

} // namespace zel::host
