// A result that is one file.
#pragma once

#include <filesystem>

#include "tools/rtrange/results/file_kinds.hpp"
#include "tools/rtrange/results/staging.hpp"

namespace rtrange {

/// Makes a file appear whole or not at all: it is written under a temporary name in the same folder
/// and renamed when it is complete. Never replaces a file that rtrange has not written.
class result_file {
public:
    /// Creates the temporary file. Throws failure, and changes nothing, when the target exists and
    /// may not be replaced, or cannot be written. A target that is neither a file nor a folder,
    /// such as a pipe, is written directly.
    result_file(std::filesystem::path target, const file_kind& kind, result_rules rules);
    result_file(const result_file&) = delete;
    result_file& operator=(const result_file&) = delete;
    /// Removes the temporary file unless it is complete or to be kept.
    ~result_file();

    /// Where the user wants the file: the name for messages.
    const std::filesystem::path& target() const { return target_; }

    /// The file to write until complete(). It exists and is empty.
    const std::filesystem::path& path() const { return path_; }

    /// Gives the file, which must be closed, the name of the target. Throws failure when that is
    /// not possible; the temporary file, which the message names, is kept then.
    void complete();

private:
    void check_target() const;
    void publish() const;

    std::filesystem::path target_;
    const file_kind& kind_;
    result_rules rules_;
    std::filesystem::path path_;
    bool finished_ = false; ///< the temporary file is not to be removed
};

} // namespace rtrange
