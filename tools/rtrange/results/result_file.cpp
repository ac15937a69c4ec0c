#include "tools/rtrange/results/result_file.hpp"

#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"

namespace rtrange {

namespace fs = std::filesystem;

namespace {

/// Whether the path leads to a pipe or a device, on which nothing can be lost.
bool is_special(const fs::path& path) {
    std::error_code ignored;
    return fs::is_other(fs::status(path, ignored));
}

} // namespace

result_file::result_file(fs::path target, const file_kind& kind, result_rules rules)
    : target_(std::move(target)), kind_(kind), rules_(rules) {
    if (is_special(target_)) {
        path_ = target_;
        finished_ = true;
        return;
    }
    check_target();
    path_ = create_partial_file(target_);
}

result_file::~result_file() {
    std::error_code ignored;
    if (!finished_ && !(rules_.keep_unfinished && fs::file_size(path_, ignored) > 0))
        fs::remove(path_, ignored);
}

void result_file::complete() {
    if (finished_)
        return;
    if (type_of(target_) != std::filesystem::file_type::not_found && !rules_.keep_unfinished &&
        !rules_.replace_when_interrupted)
        check_not_interrupted(target_);
    finished_ = true;
    try {
        check_target();
        publish();
    } catch (const failure& error) {
        throw failure(fmt::format("{}; the result is in '{}'", error.what(), path_.string()));
    }
}

void result_file::check_target() const {
    const std::string name = target_.string();
    std::error_code ignored;
    if (!target_.has_filename() || fs::is_directory(target_, ignored))
        throw failure(fmt::format("'{}' is a folder; give the name of a file", name));
    const fs::file_type type = type_of(target_);
    if (type == fs::file_type::not_found)
        return;
    if (type == fs::file_type::symlink)
        throw failure(fmt::format(
            "'{}' is a symbolic link, which rtrange does not replace; choose another name", name));
    if (!kind_.recognises(target_))
        throw failure(
            fmt::format("'{}' exists and is not {}; choose another name", name, kind_.description));
    if (!rules_.overwrite)
        throw failure(fmt::format(
            "'{}' exists; add --overwrite to replace it, or choose another name", name));
}

void result_file::publish() const {
    std::error_code error;
    if (type_of(target_) == fs::file_type::not_found)
        rename_to_new(path_, target_, error);
    else
        fs::rename(path_, target_, error);
    if (error)
        throw failure(fmt::format("cannot write '{}': {}", target_.string(), error.message()));
}

} // namespace rtrange
