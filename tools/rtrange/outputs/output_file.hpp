// Sequential output files.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace rtrange {

/// Never loses data silently. Unbuffered: callers should write large blocks.
class output_file {
public:
    /// Creates the file. Throws failure when that is not possible.
    explicit output_file(const std::filesystem::path& file);

    /// Appends the bytes. Throws failure when they cannot be written.
    void write(std::string_view bytes);

    /// Completes the file. Throws failure when anything could not be written.
    void close();

    const std::filesystem::path& path() const { return path_; }

private:
    struct closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    [[noreturn]] void fail() const;

    std::filesystem::path path_;
    std::unique_ptr<std::FILE, closer> file_;
};

} // namespace rtrange
