#include "extensibility/error_translation.hpp"

#include <exception>
#include <ios>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <comdef.h>
#endif

#include "extensibility/errors.hpp"

namespace zel::runtime {
namespace {

struct error_details_deleter {
    void operator()(zel_error_details_t* error) const noexcept { zel_error_details_destroy(error); }
};

std::uint32_t host_code(const std::error_code& code) {
    constexpr std::uint32_t generic = 0xA0030000;
    constexpr std::uint32_t iostream = 0xA0050000;
    constexpr std::uint32_t any_other = 0xA0070000;
    const auto value = static_cast<std::uint32_t>(code.value());
    if (value == 0)
        return 0;
    if (code.category() == std::generic_category())
        return value | generic;
    if (code.category() == std::iostream_category())
        return value | iostream;
    return value | any_other;
}

/// Calls `report(code, description)` for the exception being handled; the first matching clause
/// wins, so their order is part of the interface.
template <typename Report>
std::uint32_t translate_current_exception(Report report) {
    try {
        throw;
    }
#ifdef _WIN32
    catch (const _com_error& error) {
        return report(static_cast<std::uint32_t>(error.Error()), "HRESULT error");
    }
#endif
    catch (const std::bad_alloc&) {
        return report(ZEL_ERROR_OUT_OF_MEMORY, "memory allocation failed");
    } catch (const not_implemented_error& error) {
        return report(ZEL_ERROR_NOT_IMPLEMENTED, error.what());
    } catch (const timed_out_error& error) {
        return report(ZEL_ERROR_TIMED_OUT, error.what());
    } catch (const file_exists_error& error) {
        return report(ZEL_ERROR_FILE_EXISTS, error.what());
    } catch (const std::invalid_argument& error) {
        return report(ZEL_ERROR_INVALID_ARGUMENT, error.what());
    } catch (const std::system_error& error) {
        return report(host_code(error.code()), error.what());
    } catch (const std::exception& error) {
        return report(ZEL_ERROR_FAILED, error.what());
    } catch (...) {
        return report(ZEL_ERROR_FAILED, "unknown error");
    }
}

} // namespace

void convert_error_record(zel_error_details_t*& error) {
    const std::unique_ptr<zel_error_details_t, error_details_deleter> owner(error);
    error = nullptr;

    const char* const text = zel_error_details_get_description(owner.get());
    // The spelling is fixed by the interface.
    const std::string description = text != nullptr ? text : "unknwon error";
    switch (zel_error_details_get_code(owner.get())) {
    case ZEL_ERROR_NOTE:
        return;
    case ZEL_ERROR_TIMED_OUT:
        throw timed_out_error(description);
    case ZEL_ERROR_NOT_IMPLEMENTED:
        throw not_implemented_error();
    case ZEL_ERROR_FILE_EXISTS:
        throw file_exists_error(description);
    case ZEL_ERROR_INVALID_ARGUMENT:
        throw std::invalid_argument(description);
    default:
        throw std::runtime_error(description);
    }
}

zel_status_t report_current_exception(zel_error_details_t** error) noexcept {
    return translate_current_exception([error](std::uint32_t code, const char* description) {
        return zel_error_details_create(error, code, description);
    });
}

std::uint32_t code_of_current_exception() noexcept {
    return translate_current_exception([](std::uint32_t code, const char*) { return code; });
}

void throw_not_initialized(const char* name) {
    throw std::invalid_argument(std::string("argument '") + name + "' was not initialized");
}

} // namespace zel::runtime
