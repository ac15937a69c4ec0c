// Feeds files, and the files of folders, to a fuzz entry: replays a finding with any compiler.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <span>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void feed(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "cannot read '%s'\n", file.string().c_str());
        std::exit(1);
    }
    const std::vector<char> content{std::istreambuf_iterator<char>(stream), {}};
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    std::vector<fs::path> files;
    for (const fs::path argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1))
        if (fs::is_directory(argument))
            files.insert(files.end(), fs::directory_iterator(argument), {});
        else
            files.push_back(argument);
    for (const fs::path& file : files)
        feed(file);
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
