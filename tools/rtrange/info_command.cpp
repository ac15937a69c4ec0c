#include "tools/rtrange/info_command.hpp"

#include "host/loader/plugin.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace rtrange {

void print_info(const std::filesystem::path& plugin_file) {
    const zel::host::plugin loaded(plugin_file);
    print("{}\n\nMetadata\n", plugin_file.string());
    std::string_view rest = loaded.metadata();
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const std::size_t equals = line.find('=');
        print("  {:<20} {}\n", line.substr(0, equals), line.substr(equals + 1));
    }

    print("\nFormatters\n");
    const zel::host::host_services services([](const zel_log_info_t&) {});
    for (const auto* const formatter : loaded.formatters()) {
        const zel::host::formatter_instance instance(*formatter, services);
        print("  {}\n", formatter->format_type);
        for (const char* const service :
             {ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE,
              ZEL_FORMATTER_DATA_SOURCE_BINDING_SERVICE_TYPE})
            if (instance.offers(service))
                print("    {}\n", service);
    }
}

} // namespace rtrange
