// Failures that are reported to the user.
#pragma once

#include <exception>
#include <new>
#include <stdexcept>

namespace rtrange {

/// Ends the program. Its message is one line: what is wrong, where, and what to do about it.
class failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Wrong arguments, or arguments that exclude each other.
class usage_failure : public failure {
public:
    using failure::failure;
};

/// A capture that cannot be read to its end.
class broken_capture : public failure {
public:
    using failure::failure;
};

/// Exit codes of the program.
enum exit_code : int {
    exit_success = 0,
    exit_failure = 1, ///< bad input, or an output that could not be written
    exit_usage = 2    ///< wrong arguments
};

/// The exit code for an exception that ends the program.
inline exit_code exit_code_of(const std::exception& error) {
    return dynamic_cast<const usage_failure*>(&error) != nullptr ? exit_usage : exit_failure;
}

/// What the user is told of such an exception.
inline const char* message_of(const std::exception& error) {
    return dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? "not enough memory"
                                                                  : error.what();
}

} // namespace rtrange
