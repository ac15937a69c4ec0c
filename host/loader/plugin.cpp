#include "host/loader/plugin.hpp"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zel::host {
namespace {

using dispatch_tables = std::vector<const zel_formatter_dispatch_table_t*>;

/// Throws std::runtime_error for a null pointer that a plug-in returned without reporting a
/// failure.
void require(const void* returned, const std::string& what) {
    if (returned == nullptr)
        throw std::runtime_error("the plug-in returned no " + what);
}

bool collect(const zel_formatter_dispatch_table_t* dispatch_table, void* context) {
    static_cast<dispatch_tables*>(context)->push_back(dispatch_table);
    return true;
}

} // namespace

plugin::plugin(const std::filesystem::path& file) : library_(file) {
    const char* const metadata =
        library_.function<zel_runtime_query_metadata_t>(ZEL_RUNTIME_QUERY_METADATA_EXPORT)();
    require(metadata, "metadata");
    metadata_ = metadata;
    library_.function<zel_enum_formatter_dispatch_table_t>(
        ZEL_ENUM_FORMATTER_DISPATCH_TABLE_EXPORT)(&collect, &formatters_);
    for (const auto* const formatter : formatters_) {
        require(formatter, "record of a formatter");
        require(formatter->format_type, "format type of a formatter");
        if (formatter->create == nullptr || formatter->destroy == nullptr ||
            formatter->get_service_locator == nullptr)
            throw std::runtime_error("a formatter of the plug-in lacks an entry point");
    }
}

const zel_formatter_dispatch_table_t& plugin::formatter(std::string_view format_type) const {
    for (const auto* const candidate : formatters_)
        if (candidate->format_type == format_type)
            return *candidate;
    throw std::runtime_error("the plug-in has no formatter for '" + std::string(format_type) + "'");
}

formatter_instance::formatter_instance(const zel_formatter_dispatch_table_t& formatter,
                                       const host_services& services)
    : formatter_(formatter) {
    zel_error_details_t* error = nullptr;
    throw_if_failed(formatter_.create(&instance_, services.locator(), &error), error);
    require(instance_, "instance");
    try {
        throw_if_failed(formatter_.get_service_locator(instance_, &locator_, &error), error);
        require(locator_, "service locator");
        transformation_ = static_cast<const zel_formatter_raw_package_transformation_support_t*>(
            resolve(ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE));
    } catch (...) {
        formatter_.destroy(instance_);
        throw;
    }
}

formatter_instance::~formatter_instance() {
    formatter_.destroy(instance_);
}

bool formatter_instance::offers(const char* service_type) const {
    bool result = false;
    zel_error_details_t* error = nullptr;
    throw_if_failed(locator_->can_resolve(locator_->handle, service_type, &result, &error), error);
    return result;
}

package_array formatter_instance::transform(const zel_raw_package_t& raw_package) {
    zel_package_t** packages = nullptr;
    std::size_t count = 0;
    zel_error_details_t* error = nullptr;
    throw_if_failed(transformation_->transform(instance_, &raw_package, &packages, &count,
                                               &package_array::allocator(), &error),
                    error);
    return {packages, count};
}

void* formatter_instance::resolve(const char* service_type) const {
    void* service = nullptr;
    zel_error_details_t* error = nullptr;
    throw_if_failed(locator_->resolve(locator_->handle, service_type, &service, &error), error);
    require(service, std::string("service '") + service_type + "'");
    return service;
}

} // namespace zel::host
