#include "tests/harness/plugin_under_test.hpp"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <gtest/gtest.h>

#include "host/loader/plugin.hpp"

namespace harness {
namespace {

zel_status_t fail_lookup(const host_services& services, std::uint32_t code,
                         zel_error_details_t** error) {
    return zel_error_details_create(error, code, services.lookup_description);
}

zel_status_t can_resolve(void* handle, const char* service_type, bool* result,
                         zel_error_details_t** error) {
    const auto& services = *static_cast<host_services*>(handle);
    if (services.can_resolve_code != 0)
        return fail_lookup(services, services.can_resolve_code, error);
    *result = services.offers_log && std::string(service_type) == "zel_log_t";
    return 0;
}

zel_status_t resolve(void* handle, const char*, void** target, zel_error_details_t** error) {
    auto& services = *static_cast<host_services*>(handle);
    if (services.resolve_code != 0)
        return fail_lookup(services, services.resolve_code, error);
    *target = &services.log;
    return 0;
}

zel_status_t log(void* handle, const zel_log_info_t* record, zel_error_details_t** error) {
    auto& services = *static_cast<host_services*>(handle);
    if (++services.log_calls == services.failing_log_call)
        return zel_error_details_create(error, 0xA00005B4, "log is full");
    services.logs.push_back({record->level, record->message, record->module, record->file,
                             record->function, record->line, record->reserved});
    if (const auto callback = std::exchange(services.on_next_log, nullptr))
        callback();
    return 0;
}

void* allocate_array(std::size_t count, std::size_t element_size, void* context) {
    auto& owner = *static_cast<instance*>(context);
    ++owner.array_requests;
    owner.last_array_count = count;
    EXPECT_EQ(element_size, sizeof(void*));
    if (owner.allocator_fails)
        return nullptr;
    ++owner.live_arrays;
    return std::malloc(count * element_size + 1);
}

package copy_of(const zel_package_t& source) {
    EXPECT_TRUE(recording_host_block_untouched(&source));
    const auto* const data = reinterpret_cast<const std::uint8_t*>(&source + 1);
    return {source, recording_format_type(&source), bytes(data, data + source.size)};
}

raw_package wrapped(const bytes& header, const bytes& frame, std::uint64_t timestamp) {
    raw_package raw;
    raw.data = header;
    raw.data.insert(raw.data.end(), frame.begin(), frame.end());
    raw.reference_timestamp = timestamp;
    return raw;
}

} // namespace

const char* const plugin_file = PLUGIN_FILE;

std::string plugin_file_name() {
    const std::string path = plugin_file;
    return path.substr(path.find_last_of("/\\") + 1);
}

const zel_formatter_dispatch_table_t& recorder_formatter() {
    static const zel::host::plugin plugin(plugin_file);
    return plugin.formatter("zel.rtrange");
}
const zel_formatter_dispatch_table_t& ethernet_formatter() {
    static const zel::host::plugin plugin(plugin_file);
    return plugin.formatter("zel.eth.rtrange");
}

error take_error(zel_error_details_t* details) {
    if (details == nullptr)
        return {};
    const char* const text = zel_error_details_get_description(details);
    error result{zel_error_details_get_code(details), text != nullptr ? text : ""};
    zel_error_details_destroy(details);
    return result;
}

std::vector<package> outcome::decoded() const {
    std::vector<package> result;
    for (const package& candidate : packages)
        if (candidate.format_type == "zel.rtrange")
            result.push_back(candidate);
    return result;
}

host_services::host_services() : locator{&resolve, &can_resolve, this}, log{&harness::log, this} {}

bytes raw_package::block() const {
    bytes block(sizeof(zel_raw_package_t) + data.size(), 0xEE);
    auto& header = *reinterpret_cast<zel_raw_package_t*>(block.data());
    header.source_id = source_id;
    header.source_info = source_info;
    header.state_value = state_value;
    std::memcpy(header.pass_through_block, pass_through_block.data(), 16);
    header.reference_timestamp = reference_timestamp;
    header.size = data.size();
    std::copy(data.begin(), data.end(), block.begin() + sizeof(zel_raw_package_t));
    return block;
}

raw_package recorder_package(const bytes& frame, std::uint64_t timestamp) {
    return wrapped({0x01, 0x00, 0x00, 0x80}, frame, timestamp);
}

raw_package ethernet_package(const bytes& frame, std::uint64_t timestamp) {
    return wrapped(bytes(16, 0x55), frame, timestamp);
}

instance::instance(const zel_formatter_dispatch_table_t& formatter)
    : allocator{nullptr, nullptr, nullptr, &allocate_array, nullptr, nullptr, this},
      formatter_(formatter) {
    zel_error_details_t* error = nullptr;
    EXPECT_EQ(formatter.create(&handle, &services.locator, &error), 0U);
    EXPECT_EQ(formatter.get_service_locator(handle, &locator, &error), 0U);
    transformation = static_cast<const zel_formatter_raw_package_transformation_support_t*>(
        service("zel_formatter_raw_package_transformation_support_t"));
}

instance::~instance() {
    EXPECT_EQ(formatter_.destroy(handle), 0U);
    EXPECT_EQ(recording_zelc()->live_packages, 0);
    EXPECT_EQ(recording_zelc()->live_errors, 0);
    EXPECT_EQ(recording_zelc()->unclean_error_targets, 0);
    EXPECT_EQ(recording_zelc()->early_format_types, 0);
    EXPECT_EQ(live_arrays, 0);
    *recording_zelc() = {};
}

outcome instance::transform(const raw_package& raw) {
    const bytes block = raw.block();
    auto* const untouched = reinterpret_cast<zel_package_t**>(0x10);
    zel_package_t** packages = untouched;
    std::size_t count = 4711;
    zel_error_details_t* error = nullptr;
    services.logs.clear();

    outcome result;
    result.status =
        transformation->transform(handle, reinterpret_cast<const zel_raw_package_t*>(block.data()),
                                  &packages, &count, &allocator, &error);
    result.error = take_error(error);
    EXPECT_EQ(result.error.code, result.status);
    result.logs = services.logs;
    if (result.status != 0) {
        EXPECT_EQ(packages, untouched);
        EXPECT_EQ(count, 4711U);
        EXPECT_EQ(recording_zelc()->live_packages, 0);
        EXPECT_EQ(recording_zelc()->live_errors, 0);
        return result;
    }
    EXPECT_EQ(last_array_count, count);
    for (std::size_t i = 0; i < count; ++i) {
        result.packages.push_back(copy_of(*packages[i]));
        zel_package_destroy(&allocator, packages[i], nullptr);
    }
    if (packages != nullptr) // An empty result needs no array.
        --live_arrays;
    std::free(packages);
    return result;
}

outcome instance::decode(const bytes& frame, std::uint64_t timestamp) {
    return transform(&formatter_ == &recorder_formatter() ? recorder_package(frame, timestamp)
                                                          : ethernet_package(frame, timestamp));
}

void* instance::service(const char* service_type) {
    void* result = nullptr;
    zel_error_details_t* error = nullptr;
    EXPECT_EQ(locator->resolve(locator->handle, service_type, &result, &error), 0U);
    return result;
}

} // namespace harness
