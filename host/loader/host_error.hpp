// Failures that a plug-in reports to its host.
#pragma once

#include <stdexcept>
#include <string>

#include "zel/error_details.h"

namespace zel::host {

/// A failed call of the plug-in: the returned status, and its description as the message.
class host_error : public std::runtime_error {
public:
    host_error(zel_status_t status, const std::string& description)
        : std::runtime_error(description), status_(status) {}

    zel_status_t status() const { return status_; }

private:
    zel_status_t status_;
};

/// Throws host_error unless `status` is 0. Destroys the error record in every case and sets it to
/// null. The record is a reference because the call that sets it may be the first argument.
void throw_if_failed(zel_status_t status, zel_error_details_t*& error);

} // namespace zel::host
