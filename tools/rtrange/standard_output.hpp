// Standard output.
#pragma once

#include <fmt/format.h>

namespace rtrange {

/// What print() calls.
void print_formatted(fmt::string_view format, fmt::format_args arguments);

/// Formats and prints as fmt::print does. Throws failure when standard output cannot be written.
template <typename... Arguments>
void print(fmt::format_string<Arguments...> format, const Arguments&... arguments) {
    print_formatted(format, fmt::make_format_args(arguments...));
}

/// Throws failure when anything printed so far could not be written, for example to a full disk or
/// a closed pipe.
void flush_standard_output();

} // namespace rtrange
