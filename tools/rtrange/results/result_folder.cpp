#include "tools/rtrange/results/result_folder.hpp"

#include <algorithm>
#include <set>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/results/manifest.hpp"

namespace rtrange {

namespace fs = std::filesystem;

namespace {

constexpr const char* inner_name = "rtrange"; ///< of temporary folders in a folder that exists
constexpr const char* replaced_folder = "replaced";

/// "run" for "run/" and "run/.": the path from which names beside the folder are made.
fs::path without_trailing_separator(fs::path folder) {
    while ((!folder.has_filename() || folder.filename() == ".") && folder.has_parent_path() &&
           folder.has_relative_path())
        folder = folder.parent_path();
    return folder;
}

std::vector<listed_file> files_in(const fs::path& folder) {
    std::vector<listed_file> files;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file())
            files.push_back(listed(entry.path()));
    std::ranges::sort(files, {}, &listed_file::name);
    return files;
}

/// Whether a table of an earlier run is still there. Throws failure when something else has taken
/// its name.
bool is_there(const fs::path& file, const listed_file& table) {
    const fs::file_type type = type_of(file);
    if (type == fs::file_type::not_found)
        return false;
    if (type != fs::file_type::regular || listed(file) != table)
        throw failure(fmt::format("'{}' is no longer as rtrange has written it", file.string()));
    return true;
}

/// Renames files, all or none.
class renamed_files {
public:
    void rename(const fs::path& from, const fs::path& to) {
        std::error_code error;
        rename_to_new(from, to, error);
        if (error)
            throw failure(fmt::format("cannot rename '{}' to '{}': {}", from.string(), to.string(),
                                      error.message()));
        done_.emplace_back(from, to);
    }

    void undo() {
        std::error_code ignored;
        for (; !done_.empty(); done_.pop_back())
            rename_to_new(done_.back().second, done_.back().first, ignored);
    }

private:
    std::vector<std::pair<fs::path, fs::path>> done_;
};

} // namespace

result_folder::result_folder(const fs::path& target, const std::vector<std::string>& names,
                             result_rules rules)
    : target_(without_trailing_separator(target)), rules_(rules) {
    std::error_code error;
    if (const fs::path parent = target_.parent_path(); !parent.empty())
        fs::create_directories(parent, error);
    if (error)
        throw failure(fmt::format("cannot create the folder '{}': {}",
                                  target_.parent_path().string(), error.message()));
    is_new_ = !fs::is_directory(target_, error);
    if (is_new_ && type_of(target_) != fs::file_type::not_found)
        throw failure(fmt::format("cannot create the folder '{}': a file has this name; choose "
                                  "another one with -o",
                                  target_.string()));
    if (!is_new_)
        check_files(names);
    create_staging();
}

result_folder::~result_folder() {
    std::error_code ignored;
    if (!finished_ && !(rules_.keep_unfinished && !fs::is_empty(staging_, ignored)))
        fs::remove_all(staging_, ignored);
}

void result_folder::complete() {
    if (!earlier_.empty() && !rules_.keep_unfinished)
        check_not_interrupted(target_);
    finished_ = true;
    try {
        const std::vector<listed_file> written = files_in(staging_);
        if (is_new_) {
            write_manifest(path_of(manifest_name), written);
            renamed_files().rename(staging_, target_);
            return;
        }
        if (!exchange_folder(written)) {
            if (staging_.parent_path() != target_)
                move_staging_into_target();
            exchange_tables(written);
        }
    } catch (const std::exception& error) { // failures, and errors of the file system
        throw failure(
            fmt::format("{}; the new tables are in '{}'", error.what(), staging_.string()));
    }
    std::error_code ignored;
    fs::remove_all(staging_, ignored);
}

void result_folder::check_files(const std::vector<std::string>& names) {
    manifest_ = read_manifest(target_);
    std::set<std::string> all(names.begin(), names.end());
    for (const listed_file& table : manifest_)
        all.insert(table.name);
    for (const std::string& name : all) {
        const fs::path file = target_of(name);
        const fs::file_type type = type_of(file);
        if (type == fs::file_type::not_found)
            continue;
        if (type != fs::file_type::regular ||
            std::ranges::find(manifest_, name, &listed_file::name) == manifest_.end())
            throw failure(fmt::format("'{}' exists, and {} does not list it as written by rtrange; "
                                      "move it, or choose another folder with -o",
                                      file.string(), manifest_name));
        if (std::ranges::find(manifest_, listed(file)) == manifest_.end())
            throw failure(fmt::format("'{}' has been changed or copied since rtrange wrote it; "
                                      "move it, or choose another folder with -o",
                                      file.string()));
        earlier_.push_back(listed(file));
    }
    if (!earlier_.empty() && !rules_.overwrite)
        throw failure(fmt::format("'{}' contains the tables of an earlier run; add --overwrite to "
                                  "replace them, or choose another folder with -o",
                                  target_.string()));
}

void result_folder::create_staging() {
    try {
        staging_ = create_partial_folder(target_, target_);
        if (is_new_ || is_exchangeable())
            return;
        std::error_code ignored;
        fs::remove(staging_, ignored);
    } catch (const failure&) {
        if (is_new_)
            throw;
    }
    // The folder above may be read-only, or on another disk.
    staging_ = create_partial_folder(target_ / inner_name, target_);
}

/// While tables are replaced one by one, some may be missing. The temporary folder among them shows
/// that.
void result_folder::move_staging_into_target() {
    const fs::path inner = create_partial_folder(target_ / inner_name, target_);
    fs::rename(staging_, inner);
    staging_ = inner;
}

/// Whether there is nothing that rtrange has not written, apart from the temporary folder.
bool result_folder::holds_only_tables(const fs::path& folder) const {
    const auto is_own = [this](const fs::path& file) {
        return file == staging_ || (type_of(file) == fs::file_type::regular &&
                                    (file.filename() == manifest_name ||
                                     std::ranges::count(earlier_, listed(file)) > 0));
    };
    try {
        for (const auto& entry : fs::directory_iterator(folder))
            if (!is_own(entry.path()))
                return false;
        return true;
    } catch (const fs::filesystem_error&) {
        return false;
    }
}

bool result_folder::is_exchangeable() const {
    // A shell in the current folder, as with "-o .", would stay in the earlier one.
    std::error_code ignored;
    return !fs::equivalent(target_, ".", ignored) && folders_are_alike(staging_, target_) &&
           holds_only_tables(target_);
}

/// Returns false, with the earlier tables in place, when the folder cannot be exchanged.
bool result_folder::exchange_folder(const std::vector<listed_file>& written) {
    if (!is_exchangeable())
        return false;
    write_manifest(path_of(manifest_name), written);
    std::error_code error;
    exchange_folders(staging_, target_, error);
    if (error)
        return false;
    // Now the temporary folder is the earlier one.
    if (holds_only_tables(staging_))
        return true;
    exchange_folders(staging_, target_, error);
    if (!error)
        return false;
    const fs::path earlier = std::exchange(staging_, target_);
    throw failure(fmt::format("cannot bring back what was put into '{}' meanwhile, now in '{}': {}",
                              target_.string(), earlier.string(), error.message()));
}

void result_folder::exchange_tables(const std::vector<listed_file>& written) const {
    if (read_manifest(target_) != manifest_)
        throw failure(
            fmt::format("another run has meanwhile replaced the tables in '{}'", target_.string()));
    // The manifest comes first, so that at any moment it lists all tables in the folder. The
    // earlier tables leave before the new ones come, so that those of two runs are never mixed.
    std::vector<listed_file> all = earlier_;
    all.insert(all.end(), written.begin(), written.end());
    const fs::path replaced = staging_ / replaced_folder;
    fs::create_directory(replaced);
    replace_manifest(all);
    renamed_files renamed;
    try {
        for (const listed_file& table : earlier_)
            if (is_there(target_of(table.name), table))
                renamed.rename(target_of(table.name), replaced / table.name);
        for (const listed_file& table : written)
            renamed.rename(path_of(table.name), target_of(table.name));
        replace_manifest(written);
    } catch (const failure&) {
        renamed.undo();
        replace_manifest(earlier_);
        fs::remove(replaced); // only if it is empty
        throw;
    }
}

void result_folder::replace_manifest(const std::vector<listed_file>& files) const {
    write_manifest(path_of(manifest_name), files);
    fs::rename(path_of(manifest_name), target_of(manifest_name));
}

} // namespace rtrange
