#include "fuzz/fuzz_host.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "host/loader/plugin.hpp"

namespace fuzz {
namespace {

#define REQUIRE(condition)                                                                         \
    if (!(condition)) {                                                                            \
        std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition);               \
        std::abort();                                                                              \
    }

constexpr std::uint32_t failed = 0xA0000FA5;
constexpr std::uint32_t rcom_tag = 0x00200000;

const zel_formatter_dispatch_table_t& formatter(const char* format_type) {
    static const zel::host::plugin plugin(PLUGIN_FILE);
    return plugin.formatter(format_type);
}

void check_package(const zel_package_t& package, std::uint64_t timestamp, bool first) {
    REQUIRE(recording_host_block_untouched(&package));
    REQUIRE(package.reference_timestamp == timestamp);
    if (std::strcmp(recording_format_type(&package), "zel.eth") == 0) {
        REQUIRE(first);
        return;
    }
    REQUIRE(std::strcmp(recording_format_type(&package), "zel.rtrange") == 0);
    std::uint32_t tag = 0;
    std::memcpy(&tag, &package + 1, sizeof(tag));
    REQUIRE(tag % 0x00100000 == 0 && tag >= 0x00100000 && tag <= 0x00600000);
    REQUIRE(package.size == (tag == rcom_tag ? 1191U : 873U));
}

} // namespace

std::uint8_t input::byte() {
    const auto taken = take(1);
    return taken.empty() ? std::uint8_t{0} : taken[0];
}

std::span<const std::uint8_t> input::take(std::size_t size) {
    const auto taken = rest_.first(std::min(size, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
}

instance::instance(const char* format_type)
    : log_{&instance::log, this}, services_{&instance::resolve, &instance::can_resolve, this},
      allocator_{nullptr, nullptr, nullptr, &instance::allocate_array, nullptr, nullptr, this},
      formatter_(formatter(format_type)) {
    *recording_zelc() = {};
    REQUIRE(formatter_.create(&handle_, &services_, nullptr) == 0);
    const zel_service_locator_t* locator = nullptr;
    REQUIRE(formatter_.get_service_locator(handle_, &locator, nullptr) == 0);
    void* service = nullptr;
    REQUIRE(locator->resolve(locator->handle,
                             ZEL_FORMATTER_RAW_PACKAGE_TRANSFORMATION_SUPPORT_SERVICE_TYPE,
                             &service, nullptr) == 0);
    transformation_ =
        static_cast<const zel_formatter_raw_package_transformation_support_t*>(service);
}

instance::~instance() {
    REQUIRE(formatter_.destroy(handle_) == 0);
    REQUIRE(recording_zelc()->live_packages == 0);
    REQUIRE(recording_zelc()->live_errors == 0);
    REQUIRE(recording_zelc()->unclean_error_targets == 0);
}

zel_status_t instance::transform_next(input& input) {
    timestamp_ += static_cast<std::uint64_t>(static_cast<std::int8_t>(input.byte()));
    const std::size_t size = input.byte() | std::size_t{input.byte()} % 2 << 8;
    const auto data = input.take(size);

    // In a block of exactly its size, so that a sanitizer sees every byte read too far.
    std::vector<std::uint8_t> block(sizeof(zel_raw_package_t) + data.size());
    auto& raw = *reinterpret_cast<zel_raw_package_t*>(block.data());
    raw.reference_timestamp = timestamp_;
    raw.size = data.size();
    std::copy(data.begin(), data.end(), block.begin() + sizeof(zel_raw_package_t));

    zel_package_t** packages = nullptr;
    std::size_t count = 4711;
    zel_error_details_t* error = nullptr;
    const zel_status_t status =
        transformation_->transform(handle_, &raw, &packages, &count, &allocator_, &error);
    if (status != 0) {
        REQUIRE(packages == nullptr && count == 4711);
        REQUIRE(error != nullptr && zel_error_details_get_code(error) == status);
        zel_error_details_destroy(error);
        REQUIRE(recording_zelc()->live_packages == 0);
        return status;
    }
    REQUIRE(error == nullptr);
    for (std::size_t i = 0; i < count; ++i) {
        check_package(*packages[i], timestamp_, i == 0);
        zel_package_destroy(&allocator_, packages[i], nullptr);
    }
    std::free(packages);
    return 0;
}

zel_status_t instance::resolve(void* handle, const char*, void** target, zel_error_details_t**) {
    *target = &static_cast<instance*>(handle)->log_;
    return 0;
}

zel_status_t instance::can_resolve(void*, const char*, bool* result, zel_error_details_t**) {
    *result = true;
    return 0;
}

zel_status_t instance::log(void* handle, const zel_log_info_t* record,
                           zel_error_details_t** error) {
    REQUIRE(std::strlen(record->message) <= 1023);
    REQUIRE(record->level == 200 || record->level == 300 || record->level == 400);
    if (static_cast<instance*>(handle)->log_fails)
        return zel_error_details_create(error, failed, "no log");
    return 0;
}

void* instance::allocate_array(std::size_t count, std::size_t element_size, void* context) {
    if (static_cast<instance*>(context)->allocator_fails)
        return nullptr;
    return std::malloc(count * element_size);
}

void transform_all(const char* format_type, std::span<const std::uint8_t> bytes) {
    instance instance(format_type);
    for (input input(bytes); !input.empty();)
        REQUIRE(instance.transform_next(input) == 0);
}

} // namespace fuzz
