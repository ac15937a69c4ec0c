#include "tools/rtrange/results/result_folder.hpp"

#include <algorithm>
#include <iterator>
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

constexpr const char* replaced_folder = "replaced";

/// "run" for "run/": the path from which names beside the folder are made.
fs::path without_trailing_separator(fs::path folder) {
    while (!folder.has_filename() && folder.has_relative_path())
        folder = folder.parent_path();
    return folder;
}

std::vector<std::string> file_names_in(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file())
            names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

/// Whether a table of an earlier run is still there. Throws failure when something else has taken
/// its name.
bool is_table(const fs::path& file) {
    const fs::file_type type = type_of(file);
    if (type != fs::file_type::regular && type != fs::file_type::not_found)
        throw failure(fmt::format("'{}' is no longer a file of rtrange", file.string()));
    return type == fs::file_type::regular;
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
    // Within a folder that exists: the one above it may be read-only, or on another disk.
    staging_ = create_partial_folder(is_new_ ? target_ : target_ / "rtrange", target_);
}

result_folder::~result_folder() {
    std::error_code ignored;
    if (!finished_ && !(rules_.keep_unfinished && !fs::is_empty(staging_, ignored)))
        fs::remove_all(staging_, ignored);
}

void result_folder::complete() {
    finished_ = true;
    try {
        const std::vector<std::string> written = file_names_in(staging_);
        if (is_new_) {
            write_manifest(path_of(manifest_name), written);
            renamed_files().rename(staging_, target_);
            return;
        }
        exchange_tables(written);
    } catch (const std::exception& error) { // failures, and errors of the file system
        throw failure(
            fmt::format("{}; the new tables are in '{}'", error.what(), staging_.string()));
    }
    std::error_code ignored;
    fs::remove_all(staging_, ignored);
}

void result_folder::check_files(const std::vector<std::string>& names) {
    const std::vector<std::string> listed = read_manifest(target_);
    std::set<std::string> all(names.begin(), names.end());
    all.insert(listed.begin(), listed.end());
    for (const std::string& name : all) {
        const fs::file_type type = type_of(target_of(name));
        if (type == fs::file_type::not_found)
            continue;
        if (type != fs::file_type::regular || std::ranges::find(listed, name) == listed.end())
            throw failure(fmt::format("'{}' exists, and {} does not list it as written by rtrange; "
                                      "move it, or choose another folder with -o",
                                      target_of(name).string(), manifest_name));
        earlier_.push_back(name);
    }
    if (!earlier_.empty() && !rules_.overwrite)
        throw failure(fmt::format("'{}' contains the tables of an earlier run; add --overwrite to "
                                  "replace them, or choose another folder with -o",
                                  target_.string()));
}

void result_folder::exchange_tables(const std::vector<std::string>& written) const {
    // The manifest comes first, so that at any moment it lists all tables in the folder. The
    // earlier tables leave before the new ones come, so that those of two runs are never mixed.
    std::vector<std::string> all;
    std::ranges::set_union(earlier_, written, std::back_inserter(all));
    const fs::path replaced = staging_ / replaced_folder;
    fs::create_directory(replaced);
    replace_manifest(all);
    renamed_files renamed;
    try {
        for (const std::string& name : earlier_)
            if (is_table(target_of(name)))
                renamed.rename(target_of(name), replaced / name);
        for (const std::string& name : written)
            renamed.rename(path_of(name), target_of(name));
        replace_manifest(written);
    } catch (const failure&) {
        renamed.undo();
        replace_manifest(earlier_);
        fs::remove(replaced); // only if it is empty
        throw;
    }
}

void result_folder::replace_manifest(const std::vector<std::string>& names) const {
    write_manifest(path_of(manifest_name), names);
    fs::rename(path_of(manifest_name), target_of(manifest_name));
}

} // namespace rtrange
