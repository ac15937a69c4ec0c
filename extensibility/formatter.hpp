// Base class through which the host drives a formatter.
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

/// Base of a formatter class T: offers the transformation service and looks up the host's logging
/// service.
template <typename T>
class formatter : public enable_service_locator {
public:
    /// Throws std::runtime_error if the host's logging service is incomplete, and the exceptions
    /// for the host's error records.
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

    /// Decodes one raw package and appends the output packages to the list, in the order in which
    /// the host receives them. Throws std::invalid_argument if one of the pointers is null.
    virtual void format(package_list& packages, const zel_raw_package_t* raw_package,
                        const zel_allocator_t* allocator) = 0;

    /// The host's log; empty if the host offers no logging service.
    const std::shared_ptr<log::logger>& host_log() const { return logger_; }

private:
    /// The list of one call of `transform`: the instance's, which keeps its storage between calls.
    /// A host may call `transform` again from within its log function: the inner call then finds
    /// that list in use and gets its own.
    class call_list {
    public:
        explicit call_list(formatter& instance)
            : instance_(instance), nested_(std::exchange(instance.list_in_use_, true)) {}
        ~call_list() {
            packages().clear();
            instance_.list_in_use_ = nested_;
        }
        call_list(const call_list&) = delete;
        call_list& operator=(const call_list&) = delete;

        package_list& packages() { return nested_ ? own_ : instance_.list_; }

    private:
        formatter& instance_;
        const bool nested_;
        package_list own_;
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
            call_list call(instance);
            package_list& list = call.packages();
            instance.format(list, raw_package, allocator);
            *packages = hand_over(list, *allocator);
            *package_count = list.size();
        });
    }

    zel_formatter_raw_package_transformation_support_t transformation_support_;
    std::shared_ptr<runtime::service_locator> host_services_;
    std::shared_ptr<log::logger> logger_;
    package_list list_; ///< empty between calls
    bool list_in_use_ = false;
};

} // namespace zel::extensibility::transform
