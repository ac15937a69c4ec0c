#include "zel/error_details.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

struct zel_error_details_t {
    std::uint32_t code;
    char* description; ///< null if there is none; stored after the record, in the same block
};

extern "C" zel_status_t zel_error_details_create(zel_error_details_t** target, std::uint32_t code,
                                                 const char* description) {
    if (target == nullptr)
        return code;
    const std::size_t text_size = description != nullptr ? std::strlen(description) + 1 : 0;
    void* const block = std::malloc(sizeof(zel_error_details_t) + text_size);
    if (block == nullptr)
        return code;
    char* const text = static_cast<char*>(block) + sizeof(zel_error_details_t);
    if (description != nullptr)
        std::memcpy(text, description, text_size);
    *target = new (block) zel_error_details_t{code, description != nullptr ? text : nullptr};
    return code;
}

extern "C" std::uint32_t zel_error_details_get_code(const zel_error_details_t* error) {
    return error != nullptr ? error->code : 0;
}

extern "C" const char* zel_error_details_get_description(const zel_error_details_t* error) {
    return error != nullptr ? error->description : nullptr;
}

extern "C" void zel_error_details_destroy(zel_error_details_t* error) {
    std::free(error);
}
