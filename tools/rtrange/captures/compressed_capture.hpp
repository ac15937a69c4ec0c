// Captures that are compressed.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "tools/rtrange/failure.hpp"

namespace rtrange {

/// A capture that has to be unpacked before it can be read.
class compressed_capture : public failure {
public:
    compressed_capture(const std::string& message, std::string unpacking)
        : failure(message), unpacking_(std::move(unpacking)) {}

    /// The command that writes the capture to standard output.
    const std::string& unpacking() const { return unpacking_; }

private:
    std::string unpacking_;
};

/// Throws compressed_capture if the file is one, by its first bytes.
void check_not_compressed(const std::filesystem::path& file);

} // namespace rtrange
