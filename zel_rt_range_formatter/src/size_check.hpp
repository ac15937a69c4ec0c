// Checks the size of a frame or of a part of it.
#pragma once

#include <cstdint>
#include <memory>

#include "extensibility/logger.hpp"

namespace zel::toolbox::rt_range {

/// Whether `received` bytes are at least `expected`. If not, logs "Unexpected <what> (Expected at
/// least = %u, Received size = %u)." with the low 32 bits of both sizes.
inline bool has_size(const std::shared_ptr<extensibility::log::logger>& logger,
                     const extensibility::log::site& site, const char* what, std::uint64_t expected,
                     std::uint64_t received) {
    if (received >= expected)
        return true;
    extensibility::log::write(logger, ZEL_LOG_LEVEL_MALFORMED, site,
                              "Unexpected %s (Expected at least = %u, Received size = %u).", what,
                              static_cast<unsigned>(expected), static_cast<unsigned>(received));
    return false;
}

} // namespace zel::toolbox::rt_range
