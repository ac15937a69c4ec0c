#include "tools/rtrange/outputs/output_file.hpp"

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"

namespace rtrange {

output_file::output_file(const std::filesystem::path& file)
    : path_(file), file_(open_for_writing(file)) {
    if (file_ == nullptr)
        fail();
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

void output_file::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size())
        fail();
}

void output_file::close() {
    std::FILE* const file = file_.release();
    if (std::fclose(file) != 0)
        fail();
}

void output_file::fail() const {
    throw failure(fmt::format("cannot write '{}': {}", path_.string(), std::strerror(errno)));
}

} // namespace rtrange
