#include "host/loader/host_services.hpp"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace zel::host {
namespace {

bool is_log_service(const char* service_type) {
    return std::string_view(service_type) == ZEL_LOG_SERVICE_TYPE;
}

} // namespace

host_services::host_services(log_sink sink)
    : sink_(std::move(sink)), log_{&host_services::log, this}, locator_{&host_services::resolve,
                                                                        &host_services::can_resolve,
                                                                        this} {}

zel_status_t host_services::resolve(void* handle, const char* service_type, void** target,
                                    zel_error_details_t** error) {
    if (!is_log_service(service_type)) {
        const std::string text = std::string("this host has no service '") + service_type + "'";
        return zel_error_details_create(error, ZEL_ERROR_FAILED, text.c_str());
    }
    *target = &static_cast<host_services*>(handle)->log_;
    return 0;
}

zel_status_t host_services::can_resolve(void*, const char* service_type, bool* can_resolve,
                                        zel_error_details_t**) {
    *can_resolve = is_log_service(service_type);
    return 0;
}

zel_status_t host_services::log(void* handle, const zel_log_info_t* record,
                                zel_error_details_t** error) {
    try {
        static_cast<host_services*>(handle)->sink_(*record);
        return 0;
    } catch (const std::exception& error_in_sink) {
        return zel_error_details_create(error, ZEL_ERROR_FAILED, error_in_sink.what());
    } catch (...) {
        return zel_error_details_create(error, ZEL_ERROR_FAILED, "the log sink failed");
    }
}

} // namespace zel::host
