// A result that is a folder of tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/rtrange/results/manifest.hpp"
#include "tools/rtrange/results/staging.hpp"

namespace rtrange {

/// Makes a folder of tables appear whole or not at all: the tables are written to a temporary
/// folder. A new folder is that one, renamed. A folder that contains nothing but the tables of an
/// earlier run is exchanged for it in one step where the system can do that. Otherwise, the tables
/// of the earlier run are exchanged for the new ones file by file, and everything else stays
/// untouched; if the program is killed meanwhile, tables are missing until the next run. A manifest
/// in the folder lists what rtrange has written there; nothing else is ever replaced or removed.
class result_folder {
public:
    /// Creates the temporary folder. `names` are the names of all files that a run may write.
    /// Throws failure, and changes nothing, when the folder contains one of them without the
    /// manifest listing it, or tables of an earlier run that may not be replaced, or cannot be
    /// written.
    result_folder(const std::filesystem::path& target, const std::vector<std::string>& names,
                  result_rules rules);
    result_folder(const result_folder&) = delete;
    result_folder& operator=(const result_folder&) = delete;
    /// Removes the temporary folder unless it is complete or to be kept.
    ~result_folder();

    /// Where the user wants a file of this name: the name for messages.
    std::filesystem::path target_of(const std::string& name) const { return target_ / name; }

    /// The file to write for this name until complete(). It does not exist yet.
    std::filesystem::path path_of(const std::string& name) const { return staging_ / name; }

    /// Puts all files that have been written, which must be closed, into place, and the manifest
    /// with them. Removes the tables of an earlier run. Throws failure when that is not possible,
    /// also when another run has replaced them meanwhile; the earlier tables are back in their
    /// places then, and the temporary folder, which the message names, is kept.
    void complete();

private:
    void check_files(const std::vector<std::string>& names);
    void create_staging();
    void move_staging_into_target();
    bool holds_only_tables(const std::filesystem::path& folder) const;
    bool is_exchangeable() const;
    bool exchange_folder(const std::vector<listed_file>& written);
    void exchange_tables(const std::vector<listed_file>& written) const;
    void replace_manifest(const std::vector<listed_file>& files) const;

    std::filesystem::path target_;
    result_rules rules_;
    bool is_new_ = true;                ///< the target does not exist
    std::vector<listed_file> manifest_; ///< of the target at the start
    std::vector<listed_file> earlier_;  ///< tables of an earlier run that exist
    std::filesystem::path staging_;
    bool finished_ = false; ///< the temporary folder is not to be removed
};

} // namespace rtrange
