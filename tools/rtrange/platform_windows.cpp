#include "tools/rtrange/platform.hpp"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <pcap/pcap.h>
#include <sys/stat.h>
#include <windows.h>
#include <winsock2.h>

#include <shellapi.h>

#include "tools/rtrange/failure.hpp"

namespace rtrange {
namespace {

std::string utf8(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string result(3 * text.size(), '\0'); // at most three bytes per UTF-16 code unit
    result.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                            static_cast<int>(result.size()), nullptr, nullptr)));
    return result;
}

} // namespace

void set_up_process() {
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    if (pcap_init(PCAP_CHAR_ENC_UTF_8, reason.data()) != 0)
        throw failure(fmt::format("cannot initialise libpcap: {}", reason.data()));
}

std::vector<std::string> program_arguments(int, char**) {
    // main's arguments are in the system's code page, which cannot represent all file names.
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments == nullptr)
        throw failure("cannot read the command line");
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        result.push_back(utf8(arguments[i]));
    LocalFree(arguments);
    return result;
}

std::filesystem::path program_file() {
    std::wstring name(MAX_PATH, L'\0');
    while (true) {
        const DWORD size =
            GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (size < name.size())
            return name.substr(0, size);
        name.resize(2 * name.size());
    }
}

std::FILE* open_for_writing(const std::filesystem::path& file) {
    return _wfopen(file.c_str(), L"wb");
}

bool create_file(const std::filesystem::path& file, std::error_code& error) {
    const int descriptor =
        _wopen(file.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL, _S_IREAD | _S_IWRITE);
    if (descriptor < 0) {
        error.assign(errno, std::generic_category());
        return false;
    }
    _close(descriptor);
    return true;
}

void rename_to_new(const std::filesystem::path& from, const std::filesystem::path& to,
                   std::error_code& error) {
    error.clear();
    if (MoveFileW(from.c_str(), to.c_str()) == 0)
        error.assign(static_cast<int>(GetLastError()), std::system_category());
}

bool folders_are_alike(const std::filesystem::path&, const std::filesystem::path&) {
    return false;
}

void exchange_folders(const std::filesystem::path&, const std::filesystem::path&,
                      std::error_code& error) {
    error = std::make_error_code(std::errc::function_not_supported);
}

unsigned long process_id() {
    return GetCurrentProcessId();
}

std::int64_t position_in(std::FILE* file) {
    return _ftelli64(file);
}

void prepare_listening_socket(std::intptr_t socket) {
    const BOOL yes = 1;
    ::setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                 reinterpret_cast<const char*>(&yes), sizeof(yes));
    ::setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_SNDBUF,
                 reinterpret_cast<const char*>(&send_buffer_size), sizeof(send_buffer_size));
}

bool wait_to_read(std::intptr_t socket, std::chrono::milliseconds wait) {
    WSAPOLLFD asked{static_cast<SOCKET>(socket), POLLIN, 0};
    return WSAPoll(&asked, 1, static_cast<int>(wait.count())) > 0;
}

bool wait_to_write(std::intptr_t socket, std::chrono::milliseconds wait) {
    WSAPOLLFD asked{static_cast<SOCKET>(socket), POLLOUT, 0};
    return WSAPoll(&asked, 1, static_cast<int>(wait.count())) > 0;
}

void close_connection(std::intptr_t socket) {
    ::shutdown(static_cast<SOCKET>(socket), SD_BOTH);
    ::closesocket(static_cast<SOCKET>(socket));
}

std::error_code last_socket_error() {
    const int error = WSAGetLastError();
    switch (error) {
    case WSAEADDRINUSE:
        return std::make_error_code(std::errc::address_in_use);
    case WSAEADDRNOTAVAIL:
        return std::make_error_code(std::errc::address_not_available);
    case WSAEACCES:
        return std::make_error_code(std::errc::permission_denied);
    default:
        return {error, std::system_category()};
    }
}

bool standard_error_is_terminal() {
    const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

} // namespace rtrange
