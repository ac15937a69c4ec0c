#include "extensibility/enable_service_locator.hpp"

#include <cstddef>
#include <exception>
#include <stdexcept>

#include "extensibility/error_translation.hpp"

namespace zel::extensibility {
namespace {

constexpr std::size_t initial_buckets = 8;

}

enable_service_locator::enable_service_locator()
    : record_{&enable_service_locator::resolve, &enable_service_locator::can_resolve, this},
      services_(initial_buckets) {
    services_.max_load_factor(1.0F);
}

void enable_service_locator::register_service(const char* service_type,
                                              const service_provider& provider) {
    services_.try_emplace(service_type, provider);
}

void enable_service_locator::unregister_service(const char* service_type) noexcept {
    try {
        services_.erase(service_type);
    } catch (const std::exception&) {
        // Unreachable unless memory runs out for the copy of the name. A destructor cannot report
        // that, and the map is destroyed next.
    }
}

zel_status_t enable_service_locator::resolve(void* handle, const char* service_type, void** target,
                                             zel_error_details_t** error) {
    return runtime::guarded(error, [&] {
        runtime::check_argument(handle, "handle");
        runtime::check_argument(service_type, "service_type");
        runtime::check_argument(target, "target");
        const auto& services = static_cast<enable_service_locator*>(handle)->services_;
        const auto service = services.find(service_type);
        if (service == services.end())
            throw std::runtime_error(std::string("requested service '") + service_type +
                                     "' not found");
        service->second(target);
    });
}

zel_status_t enable_service_locator::can_resolve(void* handle, const char* service_type,
                                                 bool* can_resolve, zel_error_details_t** error) {
    return runtime::guarded(error, [&] {
        runtime::check_argument(handle, "handle");
        runtime::check_argument(service_type, "service_type");
        runtime::check_argument(can_resolve, "can_resolve");
        const auto& services = static_cast<enable_service_locator*>(handle)->services_;
        *can_resolve = services.contains(service_type);
    });
}

} // namespace zel::extensibility
