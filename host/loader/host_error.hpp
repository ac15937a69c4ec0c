// Failures that a plug-in reports to its host.
#pragma once

#include <stdexcept>
#include <string>

#include "zel/error_details.h"

namespace zel::host {

/// What a failing entry point returned: its status, and its description as the message.
class host_error : public std::runtime_error {
public:
    host_error(zel_status_t status, const std::string& description)
        : std::runtime_error(description), status_(status) {}

    zel_status_t status() const { return status_; }

private:
    zel_status_t status_;
};

/// Throws host_error unless `status` is 0. Takes the error record over in every case and leaves
/// null. The record comes by reference, so that the failing call itself can stand as the first
/// argument.
void throw_if_failed(zel_status_t status, zel_error_details_t*& error);

} // namespace zel::host
