// Standard output.
#pragma once

#include <fmt/format.h>

namespace rtrange {

/// What print() and print_progress() call.
void print_formatted(fmt::string_view format, fmt::format_args arguments);
void print_formatted_progress(fmt::string_view format, fmt::format_args arguments);

/// Formats and prints as fmt::print does. Throws failure when standard output cannot be written.
template <typename... Arguments>
void print(fmt::format_string<Arguments...> format, const Arguments&... arguments) {
    print_formatted(format, fmt::make_format_args(arguments...));
}

/// The same for messages about the progress of a run, at once. A run goes on when they cannot be
/// written; flush_standard_output() reports that in the end.
template <typename... Arguments>
void print_progress(fmt::format_string<Arguments...> format, const Arguments&... arguments) {
    print_formatted_progress(format, fmt::make_format_args(arguments...));
}

/// From now on, nothing is printed.
void silence_standard_output();
bool is_silent();

/// Throws failure when anything printed so far could not be written, for example to a full disk or
/// a closed pipe.
void flush_standard_output();

} // namespace rtrange
