#include "tools/rtrange/results/staging.hpp"

#include <functional>
#include <system_error>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/platform.hpp"

namespace rtrange {
namespace {

/// Tries names until one is free: a process that was killed may have left one behind.
std::filesystem::path
create_partial(const std::filesystem::path& base, const std::filesystem::path& target,
               const std::function<bool(const std::filesystem::path&, std::error_code&)>& create) {
    constexpr int most_names = 100;
    std::error_code error;
    for (int i = 1; i <= most_names; ++i) {
        std::filesystem::path partial = base;
        partial += fmt::format(".partial-{}{}", process_id(), i > 1 ? fmt::format("-{}", i) : "");
        if (create(partial, error))
            return partial;
        if (error && error != std::errc::file_exists)
            break;
    }
    throw failure(fmt::format("cannot write '{}': {}", target.string(), error.message()));
}

} // namespace

void check_not_interrupted(const std::filesystem::path& earlier_result) {
    if (interrupted())
        throw failure(
            fmt::format("interrupted; the earlier result '{}' is kept", earlier_result.string()));
}

std::filesystem::file_type type_of(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::symlink_status(path, ignored).type();
}

std::filesystem::path create_partial_file(const std::filesystem::path& target) {
    return create_partial(target, target, create_file);
}

std::filesystem::path create_partial_folder(const std::filesystem::path& base,
                                            const std::filesystem::path& target) {
    return create_partial(base, target,
                          [](const std::filesystem::path& folder, std::error_code& error) {
                              return std::filesystem::create_directory(folder, error);
                          });
}

} // namespace rtrange
