// Temporary names of results that are being written.
#pragma once

#include <filesystem>

namespace rtrange {

/// What the user permits, and what becomes of a result that is not completed.
struct result_rules {
    bool overwrite = false; ///< replace an earlier result
    bool keep_unfinished =
        false; ///< keep what has been written, for input that cannot be read again
    bool replace_when_interrupted = false; ///< replace an earlier result also after Ctrl-C
};

/// Throws failure when the user has interrupted the run: a part must not replace an earlier result.
void check_not_interrupted(const std::filesystem::path& earlier_result);

/// The type of what is at a path, without following symbolic links; not_found for nothing.
std::filesystem::file_type type_of(const std::filesystem::path& path);

/// Creates an empty file with a name of its own beside `target`: "run.h5.partial-4711" for
/// "run.h5". Throws failure, with the name of the target, when that is not possible.
std::filesystem::path create_partial_file(const std::filesystem::path& target);

/// The same for a folder. It is `base` that gets the ending; `target` is named in the failure.
std::filesystem::path create_partial_folder(const std::filesystem::path& base,
                                            const std::filesystem::path& target);

} // namespace rtrange
