// The reference zelc with one fault, which the environment variable ZELC_FAULT names.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <thread>

// The reference functions, under other names.
#define zel_error_details_create good_error_details_create
#define zel_error_details_get_code good_error_details_get_code
#define zel_error_details_get_description good_error_details_get_description
#define zel_error_details_destroy good_error_details_destroy
#define zel_package_create good_package_create
#define zel_package_create_assign_data good_package_create_assign_data
#define zel_package_assign_format_type good_package_assign_format_type
#define zel_package_destroy good_package_destroy
#define zel_raw_package_check_state_value good_raw_package_check_state_value
#include "host/zelc/error_details.cpp"
#include "host/zelc/package.cpp"
#include "host/zelc/raw_package.cpp"
#undef zel_error_details_create
#undef zel_error_details_get_code
#undef zel_error_details_get_description
#undef zel_error_details_destroy
#undef zel_package_create
#undef zel_package_create_assign_data
#undef zel_package_assign_format_type
#undef zel_package_destroy
#undef zel_raw_package_check_state_value
#ifdef BROKEN_ZELC_IS_INCOMPLETE
#define zel_raw_package_check_state_value zel_raw_package_check_state
#endif

namespace {

const char* const chosen = std::getenv("ZELC_FAULT");
const std::string_view fault = chosen != nullptr ? chosen : "";

zel_error_details_t shared_record{ZEL_ERROR_FAILED, nullptr};
thread_local zel_package_t* latest = nullptr;

void crash() {
    const volatile std::uintptr_t address = 8;
    *reinterpret_cast<volatile int*>(address) = 0;
}

zel_status_t fail(zel_error_details_t** error) {
    return good_error_details_create(error, ZEL_ERROR_FAILED, "a fault");
}

zel_status_t create_huge(zel_package_t** package, zel_error_details_t** error) {
    if (fault == "huge_package")
        return good_package_create(nullptr, 0, package, error);
    if (fault == "null_on_failure")
        *package = nullptr;
    return good_error_details_create(error, ZEL_ERROR_OUT_OF_MEMORY, "too large");
}

void damage_latest(zel_package_t* next) {
    if (latest != nullptr)
        ++*reinterpret_cast<std::uint8_t*>(latest + 1);
    latest = next->size != 0 ? next : nullptr;
}

} // namespace

extern "C" {

ZEL_API zel_status_t zel_error_details_create(zel_error_details_t** target, std::uint32_t code,
                                              const char* text) {
    if (target == nullptr) {
        if (fault == "null_target_crashes")
            crash();
        return fault == "null_target_succeeds" ? 0 : code;
    }
    if (fault == "no_record")
        return code;
    if (fault == "null_text_is_empty" && text == nullptr)
        text = "";
    if (fault == "empty_text_is_null" && text != nullptr && *text == '\0')
        text = nullptr;
    good_error_details_create(target, code, text);
    if (fault == "keeps_text")
        (*target)->description = const_cast<char*>(text);
    if (fault == "short_texts" && text != nullptr && std::strlen(text) > 1023)
        (*target)->description[1023] = '\0';
    return fault == "returns_success" ? 0 : code;
}

ZEL_API std::uint32_t zel_error_details_get_code(const zel_error_details_t* error) {
    return fault == "no_code_zero" && error->code == 0 ? 1 : error->code;
}

ZEL_API const char* zel_error_details_get_description(const zel_error_details_t* error) {
    thread_local char buffer[1 << 21];
    if (fault != "one_text" || error->description == nullptr)
        return error->description;
    return std::strcpy(buffer, error->description);
}

ZEL_API void zel_error_details_destroy(zel_error_details_t* error) {
    if (error == nullptr && fault == "null_record_crashes")
        crash();
    if (error != &shared_record)
        good_error_details_destroy(error);
}

ZEL_API zel_status_t zel_package_create(const zel_allocator_t* allocator, std::size_t size,
                                        zel_package_t** package, zel_error_details_t** error) {
    static const std::thread::id first_thread = std::this_thread::get_id();
    if (size > SIZE_MAX / 4)
        return create_huge(package, error);
    if ((fault == "no_empty_package" && size == 0) ||
        (fault == "one_thread" && std::this_thread::get_id() != first_thread))
        return fail(error);
    if (fault == "no_package")
        return 0;
    if (fault == "foreign_context")
        std::free(allocator->allocate_array(1, size + 1, nullptr));
    good_package_create(allocator, size, package, error);
    if (fault == "dirty_header")
        (*package)->host_block[15] = 1;
    if (fault == "size_with_header")
        (*package)->size += sizeof(zel_package_t);
    if (fault == "overlap")
        damage_latest(*package);
    return 0;
}

ZEL_API zel_status_t zel_package_create_assign_data(const zel_allocator_t* allocator,
                                                    const char* format_type, const void* data,
                                                    std::size_t size, zel_package_t** package,
                                                    zel_error_details_t** error) {
    if (fault == "no_empty_data" && size == 0)
        return fail(error);
    good_package_create_assign_data(allocator, format_type, data, size, package, error);
    if (fault == "source_with_data")
        (*package)->source_id = 1;
    if (fault == "last_byte" && size != 0)
        reinterpret_cast<std::uint8_t*>(*package + 1)[size - 1] = 0;
    return 0;
}

ZEL_API zel_status_t zel_package_assign_format_type(zel_package_t* package, const char* format_type,
                                                    zel_error_details_t** error) {
    if (error == nullptr && fault == "null_error_crashes")
        crash();
    if ((error == nullptr && fault == "null_error_fails") ||
        (fault == "short_types" && std::strlen(format_type) > 11))
        return fail(error);
    if (fault == "clears_header")
        package->reserved_48 = 0;
    if (fault == "clears_data" && package->size != 0)
        *reinterpret_cast<std::uint8_t*>(package + 1) = 0;
    if (fault == "keeps_type")
        std::memcpy(package->host_block, &format_type, sizeof(format_type));
    else
        good_package_assign_format_type(package, format_type, error);
    if (fault == "success_with_record" && error != nullptr)
        fail(error);
    return 0;
}

ZEL_API zel_status_t zel_package_destroy(const zel_allocator_t* allocator, zel_package_t* package,
                                         zel_error_details_t** error) {
    if (package == nullptr) {
        if (fault == "null_package_throws")
            throw std::invalid_argument("null");
        return fault == "null_package_fails" ? fail(error) : 0;
    }
    if (package == latest)
        latest = nullptr;
    good_package_destroy(allocator, package, error);
    return fault == "destroy_fails" && error != nullptr ? fail(error) : 0;
}

ZEL_API zel_status_t zel_raw_package_check_state_value(std::uint32_t state_value,
                                                       std::uint16_t source_id,
                                                       std::uint32_t nibble,
                                                       zel_error_details_t** error) {
    if (fault == "percent" && state_value == 1)
        return good_error_details_create(error, ZEL_ERROR_FAILED, "50%% of 100%");
    if (fault == "shared_record" && error != nullptr) {
        *error = &shared_record;
        return ZEL_ERROR_FAILED;
    }
    return good_raw_package_check_state_value(state_value, source_id, nibble, error);
}

} // extern "C"
