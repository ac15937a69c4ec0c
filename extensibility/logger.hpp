// Sends log records to the host.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>

#include "zel/log.h"

#if defined(__GNUC__)
#define ZEL_PRINTF_LIKE(format_index, first_argument)                                              \
    __attribute__((format(printf, format_index, first_argument)))
#else
#define ZEL_PRINTF_LIKE(format_index, first_argument)
#endif

namespace zel::extensibility::log {

/// Source location of a log record.
struct site {
    const char* function; ///< fully qualified, without return type and parameters
    const char* file;     ///< source path or name; the host receives the last component
    std::uint32_t line;
};

/// The source location of the caller, in the function with this name.
constexpr site here(const char* function, const char* file = __builtin_FILE(),
                    std::uint32_t line = __builtin_LINE()) {
    return {function, file, line};
}

/// Sends records to the host's logging service, which must outlive the logger.
class logger : public std::enable_shared_from_this<logger> {
public:
    /// Throws std::runtime_error if the record or one of its fields is null.
    explicit logger(const zel_log_t* log);

    /// Formats one message printf-style, truncates it to 1023 characters and sends it. Throws the
    /// exception for the host's error record.
    void log(std::uint32_t level, const char* module, const site& where, const char* format,
             std::va_list arguments) const;

private:
    const zel_log_t* log_;
};

/// Logs one printf-style message; does nothing if there is no logger.
ZEL_PRINTF_LIKE(4, 5)
void write(const std::shared_ptr<logger>& logger, std::uint32_t level, const site& where,
           const char* format, ...);

} // namespace zel::extensibility::log
