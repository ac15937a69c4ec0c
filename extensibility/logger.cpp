#include "extensibility/logger.hpp"

#include <array>
#include <cstdio>
#include <stdexcept>

#include "extensibility/error_translation.hpp"
#include "extensibility/module_name.hpp"

namespace zel::extensibility::log {

logger::logger(const zel_log_t* log) : log_(log) {
    if (log == nullptr || log->log == nullptr || log->handle == nullptr)
        throw std::runtime_error("invalid logger interface passed to logger constructor");
}

void logger::log(std::uint32_t level, const char* module, const site& where, const char* format,
                 std::va_list arguments) const {
    std::array<char, 1024> message{};
    std::vsnprintf(message.data(), message.size(), format, arguments);
    const zel_log_info_t record{
        level,          message.data(), module, last_path_component(where.file),
        where.function, where.line,     0};
    zel_error_details_t* error = nullptr;
    log_->log(log_->handle, &record, &error);
    runtime::throw_if_failed(error);
}

void write(const std::shared_ptr<logger>& logger, std::uint32_t level, const site& where,
           const char* format, ...) {
    if (logger == nullptr)
        return;
    module_path path{};
    const char* const module = module_name(path);
    std::va_list arguments;
    va_start(arguments, format);
    try {
        logger->log(level, module, where, format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

} // namespace zel::extensibility::log
