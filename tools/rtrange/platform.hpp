// Functions that differ between operating systems. File names in strings are UTF-8.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace rtrange {

/// Prepares the process. Called first. Throws failure when that is not possible.
void set_up_process();

/// The arguments of the program, without the program's name.
std::vector<std::string> program_arguments(int argc, char** argv);

/// The executable file of this program.
std::filesystem::path program_file();

/// Creates or empties a binary file. Returns null and sets errno when that is not possible.
std::FILE* open_for_writing(const std::filesystem::path& file);

/// Creates an empty file. Returns false and sets the error when that is not possible, also because
/// the name is taken.
bool create_file(const std::filesystem::path& file, std::error_code& error);

/// Renames a file or folder. Sets the error when that is not possible, also because the new name is
/// taken: unlike std::filesystem::rename, it replaces nothing.
void rename_to_new(const std::filesystem::path& from, const std::filesystem::path& to,
                   std::error_code& error);

/// Whether one folder can take the place of another without a visible difference: same file system,
/// owner, group, permissions and extended attributes, such as access control lists, and nothing
/// mounted at either. False on Windows, which cannot exchange folders.
bool folders_are_alike(const std::filesystem::path& one, const std::filesystem::path& other);

/// Exchanges the names of two folders in one step. Sets the error when that is not possible, also
/// because the file system cannot do it; then nothing has changed.
void exchange_folders(const std::filesystem::path& one, const std::filesystem::path& other,
                      std::error_code& error);

/// Number of this process.
unsigned long process_id();

/// The current offset in bytes; -1 for a stream without one, such as a pipe.
std::int64_t position_in(std::FILE* file);

/// How many bytes the system holds back for each connection that prepare_listening_socket's socket
/// accepts. A slow reader shall be noticed soon, not after the megabytes of the usual buffer.
constexpr int send_buffer_size = 65536;

/// Lets a socket listen on a port that was in use until now, and keeps others off that port.
void prepare_listening_socket(std::intptr_t socket);

/// Waits until a socket can be read or written, or has failed. Returns false if neither happens.
bool wait_to_read(std::intptr_t socket, std::chrono::milliseconds wait);
bool wait_to_write(std::intptr_t socket, std::chrono::milliseconds wait);

/// Ends a connection.
void close_connection(std::intptr_t socket);

/// Why the last call of a socket function failed.
std::error_code last_socket_error();

/// Whether standard error is a terminal that supports escape sequences.
bool standard_error_is_terminal();

} // namespace rtrange
