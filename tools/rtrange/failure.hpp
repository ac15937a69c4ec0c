// Failures that the user is told about.
#pragma once

#include <stdexcept>

namespace rtrange {

/// Ends the program with one line on standard error: what was wrong, where, and what to do.
class failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Arguments that do not go together.
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
