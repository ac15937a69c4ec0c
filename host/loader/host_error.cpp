#include "host/loader/host_error.hpp"

namespace zel::host {

void throw_if_failed(zel_status_t status, zel_error_details_t*& error) {
    if (status == 0 && error == nullptr)
        return;
    const char* const text = error != nullptr ? zel_error_details_get_description(error) : nullptr;
    const std::string description = text != nullptr ? text : "no description";
    zel_error_details_destroy(error);
    error = nullptr;
    if (status != 0)
        throw host_error(status, description);
}

} // namespace zel::host
