/* A minimal host: decodes a capture, prints a value of each package, and exits at the first
 * failure. usage: minimal_host PLUGIN CAPTURE */
#include <stdlib.h>
#include <string.h>

#include "capture.h"
#include "services.h"
#include "shared_library.h"
#include "zel/formatter.h"
#include "zel/rt_range_records.h"

static zel_error_details_t* error; /* of the current call; null between calls */

static void check(bool good, const char* step) {
    if (!good) {
        const char* text = error != NULL ? zel_error_details_get_description(error) : NULL;
        fprintf(stderr, "minimal_host: cannot %s: %s\n", step, text != NULL ? text : "no reason");
        exit(1);
    }
    zel_error_details_destroy(error); /* a note may come with a success */
    error = NULL;
}

/* Whether the plug-in was built with this version of the interface. */
static bool is_compatible(const char* metadata) {
    char line[40];
    snprintf(line, sizeof(line), "\nzel-sdk-version=0.%d.", ZEL_INTERFACE_VERSION);
    return strstr(metadata, line) != NULL;
}

static bool select_formatter(const zel_formatter_dispatch_table_t* formatter, void* selected) {
    printf("formatter %s\n", formatter->format_type);
    if (strcmp(formatter->format_type, ZEL_FORMAT_TYPE_RTRANGE) == 0)
        *(const zel_formatter_dispatch_table_t**)selected = formatter;
    return true;
}

static const void* service_of(const zel_service_locator_t* locator, const char* service_type) {
    void* service = NULL;
    check(locator->resolve(locator->handle, service_type, &service, &error) == 0, "get a service");
    return service;
}

/* The zelc of this host stores the format type in the host's block of the header. */
static void print(const zel_package_t* package) {
    if (strcmp((const char*)package->host_block, ZEL_FORMAT_TYPE_RTRANGE) != 0)
        return; /* the Ethernet frame, which precedes the packages decoded from it */
    const char* const data = (const char*)(package + 1);
    uint32_t tag = 0;
    memcpy(&tag, data, sizeof(tag));
    if (tag == ZEL_RT_RANGE_TAG_RCOM) {
        zel_rt_range_rcom_record_t record;
        memcpy(&record, data + sizeof(tag), sizeof(record));
        printf("%08X range %.4f\n", (unsigned)tag, record.range_longitudinal);
    } else {
        zel_rt_range_ncom_record_t record;
        memcpy(&record, data + sizeof(tag), sizeof(record));
        printf("%08X velocity north %.4f\n", (unsigned)tag, record.velocity_north);
    }
}

static void decode(const zel_raw_package_t* raw, void* instance,
                   const zel_formatter_raw_package_transformation_support_t* service) {
    zel_package_t** packages = NULL;
    size_t count = 0;
    check(service->transform(instance, raw, &packages, &count, &host_allocator, &error) == 0,
          "transform");
    for (size_t i = 0; i < count; ++i) {
        print(packages[i]);
        check(zel_package_destroy(&host_allocator, packages[i], &error) == 0, "free a package");
    }
    free(packages);
}

static void run(const zel_formatter_dispatch_table_t* formatter, FILE* capture) {
    void* instance = NULL;
    const zel_service_locator_t* locator = NULL;
    check(formatter->create(&instance, host_services(), &error) == 0, "create an instance");
    check(formatter->get_service_locator(instance, &locator, &error) == 0, "get its locator");
    const zel_formatter_data_source_binding_t* const binding =
        service_of(locator, ZEL_FORMATTER_DATA_SOURCE_BINDING_SERVICE_TYPE);
    const zel_data_source_provider_t provider = {{NULL}};
    check(binding->bind(instance, capture, &provider, &error) == 0, "bind");
    const zel_formatter_raw_package_transformation_support_t* const transformation =
        service_of(locator, ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE);
    static raw_frame_t raw;
    while (!at_end(capture)) {
        check(read_frame(capture, &raw), "read a frame");
        decode(&raw.header, instance, transformation);
    }
    check(formatter->destroy(instance) == 0, "destroy the instance");
}

int main(int argc, char** argv) {
    check(argc == 3, "start without PLUGIN and CAPTURE");
    void* const plugin = load_library(argv[1]);
    FILE* const capture = open_capture(argv[2]);
    check(plugin != NULL && capture != NULL, "open both files");
    const zel_runtime_query_metadata_t query_metadata =
        (zel_runtime_query_metadata_t)find_function(plugin, ZEL_RUNTIME_QUERY_METADATA_EXPORT);
    const zel_enum_formatter_dispatch_table_t enumerate =
        (zel_enum_formatter_dispatch_table_t)find_function(
            plugin, ZEL_ENUM_FORMATTER_DISPATCH_TABLE_EXPORT);
    check(query_metadata != NULL && enumerate != NULL, "find the exports");
    const char* const metadata = query_metadata();
    printf("%s\n", metadata);
    check(is_compatible(metadata), "use a plug-in with another interface version");
    const zel_formatter_dispatch_table_t* formatter = NULL;
    enumerate(select_formatter, &formatter);
    check(formatter != NULL, "find the formatter");
    run(formatter, capture);
    unload_library(plugin);
    fclose(capture);
    return 0;
}
