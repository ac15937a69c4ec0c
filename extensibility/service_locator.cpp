#include "extensibility/service_locator.hpp"

#include "extensibility/error_translation.hpp"

namespace zel::runtime {

service_locator::service_locator(const zel_service_locator_t* host) : host_(host) {}

bool service_locator::can_resolve(const std::string& service_type) {
    if (host_ == nullptr || host_->can_resolve == nullptr)
        return false;
    bool result = false;
    zel_error_details_t* error = nullptr;
    host_->can_resolve(host_->handle, service_type.c_str(), &result, &error);
    throw_if_failed(error);
    return result;
}

void service_locator::resolve(const std::string& service_type, void** target) {
    if (host_ == nullptr || host_->resolve == nullptr)
        return;
    zel_error_details_t* error = nullptr;
    host_->resolve(host_->handle, service_type.c_str(), target, &error);
    throw_if_failed(error);
}

} // namespace zel::runtime
