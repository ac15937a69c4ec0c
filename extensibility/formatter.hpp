// Turns a formatter class into something that the host can drive.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "extensibility/enable_service_locator.hpp"
#include "extensibility/error_translation.hpp"
#include "extensibility/logger.hpp"
#include "extensibility/owned_package.hpp"
#include "extensibility/service_locator.hpp"
#include "zel/formatter.h"

namespace zel::extensibility::transform {

/// Base of a formatter class T: offers the transformation service and finds the host's logging
/// service.
template <typename T>
class formatter : public enable_service_locator {
public:
    /// Throws std::runtime_error when the host offers an unusable logging service, and what the
    /// host's error records say.
    explicit formatter(std::shared_ptr<runtime::service_locator> host_services)
        : transformation_support_{&formatter::transform}, host_services_(std::move(host_services)) {
        register_service(ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE,
                         [this](void** target) { *target = &transformation_support_; });
        if (!host_services_->can_resolve(ZEL_LOG_SERVICE_TYPE))
            return;
        void* log = nullptr;
        host_services_->resolve(ZEL_LOG_SERVICE_TYPE, &log);
        logger_ = std::make_shared<log::logger>(static_cast<const zel_log_t*>(log));
    }

    ~formatter() override {
        unregister_service(ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE);
    }

    /// Decodes one raw package and appends the output packages to the list; the host gets them in
    /// this order. Checks both pointers.
    virtual void format(package_list& packages, const zel_raw_package_t* raw_package,
                        const zel_allocator_t* allocator) = 0;

    /// The host's log; empty if it offers none.
    const std::shared_ptr<log::logger>& host_log() const { return logger_; }

private:
    /// Destroys what was not handed over, however the transformation ends.
    struct emptied_at_the_end {
        package_list& packages;
        ~emptied_at_the_end() { packages.clear(); }
    };

    static zel_status_t transform(void* handle, const zel_raw_package_t* raw_package,
                                  zel_package_t*** packages, std::size_t* package_count,
                                  const zel_allocator_t* allocator, zel_error_details_t** error) {
        return runtime::guarded(error, [&] {
            runtime::check_argument(handle, "handle");
            runtime::check_argument(packages, "packages");
            runtime::check_argument(package_count, "package_count");
            runtime::check_argument(allocator, "allocator");
            formatter& instance = *static_cast<T*>(handle);
            const emptied_at_the_end cleanup{instance.packages_};
            instance.format(instance.packages_, raw_package, allocator);
            hand_over(instance.packages_, *allocator, *packages, *package_count);
        });
    }

    zel_formatter_raw_package_transformation_support_t transformation_support_;
    std::shared_ptr<runtime::service_locator> host_services_;
    std::shared_ptr<log::logger> logger_;
    package_list packages_; ///< empty between calls; kept for its storage
};

} // namespace zel::extensibility::transform
