// Failures that are reported to the user.
#pragma once

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

} // namespace rtrange
