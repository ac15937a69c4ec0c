#include "tests/harness/recording_zelc.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

struct zel_error_details_t {
    std::uint32_t code;
    std::string description;
    bool has_description;
};

namespace {

recording_zelc_t state{};

constexpr int unwritten = 0xCD;

/// Stands before every package, out of the plug-in's reach.
struct package_prefix {
    char format_type[32];
};

package_prefix& prefix_of(const zel_package_t* package) {
    return *(reinterpret_cast<package_prefix*>(const_cast<zel_package_t*>(package)) - 1);
}

/// Counts the call; true when it is the one to fail.
bool fails(zel_error_details_t** error) {
    if (*error != nullptr)
        ++state.unclean_error_targets;
    if (state.notes)
        zel_error_details_create(error, 1, "just a note");
    return ++state.calls == state.failing_call;
}

/// A failing call reports its failure alone, without the note.
zel_status_t fail(zel_error_details_t** error) {
    zel_error_details_destroy(*error);
    return zel_error_details_create(error, 0xA0030011, "host failure");
}

void free_package(zel_package_t* package) {
    --state.live_packages;
    std::free(&prefix_of(package));
}

void set_format_type(zel_package_t* package, const char* format_type) {
    char* const target = prefix_of(package).format_type;
    std::strncpy(target, format_type, sizeof(package_prefix::format_type) - 1);
}

zel_package_t* new_package(std::size_t size) {
    const std::size_t whole = sizeof(package_prefix) + sizeof(zel_package_t) + size;
    auto* const prefix = static_cast<package_prefix*>(std::malloc(whole));
    std::memset(static_cast<void*>(prefix), unwritten, whole);
    *prefix = {};
    auto* const package = reinterpret_cast<zel_package_t*>(prefix + 1);
    package->size = size;
    ++state.live_packages;
    return package;
}

/// Fails a call that was to create a package.
zel_status_t fail_creation(std::size_t size, zel_package_t** package, zel_error_details_t** error) {
    if (state.failure == RECORDING_BY_NOTHING)
        return 0;
    if (state.failure == RECORDING_BY_STALE_POINTER) {
        *package = new_package(size);
        free_package(*package);
    }
    return fail(error);
}

} // namespace

extern "C" {

recording_zelc_t* recording_zelc() {
    return &state;
}

const char* recording_format_type(const zel_package_t* package) {
    return prefix_of(package).format_type;
}

bool recording_host_block_untouched(const zel_package_t* package) {
    return std::all_of(std::begin(package->host_block), std::end(package->host_block),
                       [](std::uint8_t byte) { return byte == unwritten; });
}

zel_status_t zel_error_details_create(zel_error_details_t** target, std::uint32_t code,
                                      const char* description) {
    if (target != nullptr) {
        *target = new zel_error_details_t{code, description != nullptr ? description : "",
                                          description != nullptr};
        ++state.live_errors;
    }
    return code;
}

std::uint32_t zel_error_details_get_code(const zel_error_details_t* error) {
    return error->code;
}

const char* zel_error_details_get_description(const zel_error_details_t* error) {
    return error->has_description ? error->description.c_str() : nullptr;
}

void zel_error_details_destroy(zel_error_details_t* error) {
    if (error != nullptr)
        --state.live_errors;
    delete error;
}

zel_status_t zel_package_create(const zel_allocator_t*, std::size_t size, zel_package_t** package,
                                zel_error_details_t** error) {
    if (fails(error))
        return fail_creation(size, package, error);
    *package = new_package(size);
    return 0;
}

zel_status_t zel_package_create_assign_data(const zel_allocator_t*, const char* format_type,
                                            const void* data, std::size_t size,
                                            zel_package_t** package, zel_error_details_t** error) {
    if (fails(error))
        return fail_creation(size, package, error);
    *package = new_package(size);
    set_format_type(*package, format_type);
    std::memcpy(*package + 1, data, size);
    return 0;
}

zel_status_t zel_package_assign_format_type(zel_package_t* package, const char* format_type,
                                            zel_error_details_t** error) {
    if (fails(error))
        return fail(error);
    constexpr std::uint32_t never_filled = 0xCDCDCDCD;
    if (package->reserved_48 == never_filled)
        ++state.early_format_types;
    set_format_type(package, format_type);
    return 0;
}

zel_status_t zel_package_destroy(const zel_allocator_t*, zel_package_t* package,
                                 zel_error_details_t**) {
    free_package(package);
    return 0;
}

zel_status_t zel_raw_package_check_state_value(std::uint32_t state_value, std::uint16_t source_id,
                                               std::uint32_t source_info_nibble,
                                               zel_error_details_t** error) {
    state.checked_state_value = state_value;
    state.checked_source_id = source_id;
    state.checked_nibble = source_info_nibble;
    if (!state.state_record)
        return 0;
    return zel_error_details_create(error, state.state_code, state.state_description);
}

} // extern "C"
