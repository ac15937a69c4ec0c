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
    compressed_capture(const std::string& message, std::string unpacking, std::string unpacked_name)
        : failure(message), unpacking_(std::move(unpacking)),
          unpacked_name_(std::move(unpacked_name)) {}

    /// The command that writes the capture to standard output.
    const std::string& unpacking() const { return unpacking_; }

    /// "run" for "run.pcap.gz": the name without extensions; empty if there are none.
    const std::string& unpacked_name() const { return unpacked_name_; }

private:
    std::string unpacking_;
    std::string unpacked_name_;
};

/// The name of a file as an argument in a shell.
std::string shell_argument(const std::string& name);

/// Throws compressed_capture if the file is one, by its first bytes.
void check_not_compressed(const std::filesystem::path& file);

} // namespace rtrange
