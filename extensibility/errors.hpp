// Exception classes for three error codes of the host.
#pragma once

#include <stdexcept>
#include <string>

namespace zel::runtime {

/// Host code 0xA0000FA1.
class not_implemented_error : public std::logic_error {
public:
    explicit not_implemented_error(const std::string& message = "function not implemented")
        : std::logic_error(message) {}
};

/// Host code 0xA00005B4.
class timed_out_error : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// Host code 0xA0030011.
class file_exists_error : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

} // namespace zel::runtime
