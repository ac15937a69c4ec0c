// Formatter plug-ins and their instances.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "host/loader/host_error.hpp"
#include "host/loader/host_services.hpp"
#include "host/loader/packages.hpp"
#include "host/loader/shared_library.hpp"
#include "zel/formatter.h"

namespace zel::host {

/// A loaded plug-in file. Must outlive its instances.
class plugin {
public:
    /// Throws std::runtime_error when the file is not a formatter plug-in.
    explicit plugin(const std::filesystem::path& file);

    /// key=value lines separated by line feeds.
    std::string_view metadata() const { return metadata_; }

    /// All formatter classes, in the plug-in's order.
    const std::vector<const zel_formatter_dispatch_table_t*>& formatters() const {
        return formatters_;
    }

    /// The class for raw packages of this format type. Throws std::runtime_error if there is none.
    const zel_formatter_dispatch_table_t& formatter(std::string_view format_type) const;

private:
    shared_library library_;
    std::string_view metadata_;
    std::vector<const zel_formatter_dispatch_table_t*> formatters_;
};

/// One instance of a formatter class. Failures that the plug-in reports are thrown as host_error.
class formatter_instance {
public:
    /// Creates the instance and resolves its transformation service.
    formatter_instance(const zel_formatter_dispatch_table_t& formatter,
                       const host_services& services);
    ~formatter_instance();
    formatter_instance(const formatter_instance&) = delete;
    formatter_instance& operator=(const formatter_instance&) = delete;

    /// Whether the instance offers a service.
    bool offers(const char* service_type) const;

    /// Decodes one raw package.
    package_array transform(const zel_raw_package_t& raw_package);

private:
    void* resolve(const char* service_type) const;

    const zel_formatter_dispatch_table_t& formatter_;
    void* instance_ = nullptr;
    const zel_service_locator_t* locator_ = nullptr;
    const zel_formatter_raw_package_transformation_support_t* transformation_ = nullptr;
};

} // namespace zel::host
