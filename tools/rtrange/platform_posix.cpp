#include "tools/rtrange/platform.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace rtrange {
namespace {

/// Names and values of the extended attributes; none if the file system has no such attributes.
std::map<std::string, std::string> extended_attributes(const std::filesystem::path& file) {
    constexpr std::size_t most_bytes = 65536; // of all names, and of a value
    std::string names(most_bytes, '\0'), value;
    const ssize_t size = ::llistxattr(file.c_str(), names.data(), names.size());
    names.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    std::map<std::string, std::string> attributes;
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
        value.resize(most_bytes);
        const char* const name = &names[at];
        const ssize_t read = ::lgetxattr(file.c_str(), name, value.data(), value.size());
        value.resize(static_cast<std::size_t>(std::max<ssize_t>(read, 0)));
        attributes[name] = value;
    }
    return attributes;
}

/// Attributes that must be equal for two folders to be exchanged.
struct folder_status {
    bool is_known = false; ///< a folder at which nothing is mounted
    std::uint64_t device = 0;
    unsigned mode = 0, owner = 0, group = 0;
    std::map<std::string, std::string> attributes;

    bool operator==(const folder_status&) const = default;
};

folder_status status_of(const std::filesystem::path& folder) {
    struct statx status {};
    if (::statx(AT_FDCWD, folder.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS, &status) != 0)
        return {};
    const bool is_mount = (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 ||
                          (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) == 0;
    return {S_ISDIR(status.stx_mode) && !is_mount,
            gnu_dev_makedev(status.stx_dev_major, status.stx_dev_minor),
            status.stx_mode,
            status.stx_uid,
            status.stx_gid,
            extended_attributes(folder)};
}

} // namespace

void set_up_process() {
    // Tables are completed even when the reader of standard output has exited.
    std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> program_arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

std::filesystem::path program_file() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::FILE* open_for_writing(const std::filesystem::path& file) {
    return std::fopen(file.c_str(), "wb");
}

bool create_file(const std::filesystem::path& file, std::error_code& error) {
    constexpr mode_t anybody_may_read_and_write = 0666; // less what the user's umask forbids
    const int descriptor =
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, anybody_may_read_and_write);
    if (descriptor < 0) {
        error.assign(errno, std::generic_category());
        return false;
    }
    ::close(descriptor);
    return true;
}

void rename_to_new(const std::filesystem::path& from, const std::filesystem::path& to,
                   std::error_code& error) {
    error.clear();
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return;
    error.assign(errno, std::generic_category());
    if (errno != EINVAL && errno != ENOSYS)
        return;
    // Not all file systems can do this in one step.
    std::error_code ignored;
    if (std::filesystem::symlink_status(to, ignored).type() !=
        std::filesystem::file_type::not_found)
        error = std::make_error_code(std::errc::file_exists);
    else
        std::filesystem::rename(from, to, error);
}

bool folders_are_alike(const std::filesystem::path& one, const std::filesystem::path& other) {
    const folder_status first = status_of(one);
    return first.is_known && first == status_of(other);
}

void exchange_folders(const std::filesystem::path& one, const std::filesystem::path& other,
                      std::error_code& error) {
    error.clear();
    if (::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) != 0)
        error.assign(errno, std::generic_category());
}

unsigned long process_id() {
    return static_cast<unsigned long>(::getpid());
}

std::int64_t position_in(std::FILE* file) {
    return ftello(file);
}

void prepare_listening_socket(std::intptr_t socket) {
    const int yes = 1;
    ::setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    ::setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_SNDBUF, &send_buffer_size,
                 sizeof(send_buffer_size));
}

bool wait_to_read(std::intptr_t socket, std::chrono::milliseconds wait) {
    pollfd asked{static_cast<int>(socket), POLLIN, 0};
    return ::poll(&asked, 1, static_cast<int>(wait.count())) > 0;
}

bool wait_to_write(std::intptr_t socket, std::chrono::milliseconds wait) {
    pollfd asked{static_cast<int>(socket), POLLOUT, 0};
    return ::poll(&asked, 1, static_cast<int>(wait.count())) > 0;
}

void close_connection(std::intptr_t socket) {
    ::shutdown(static_cast<int>(socket), SHUT_RDWR);
    ::close(static_cast<int>(socket));
}

std::error_code last_socket_error() {
    return {errno, std::generic_category()};
}

bool standard_error_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

} // namespace rtrange
