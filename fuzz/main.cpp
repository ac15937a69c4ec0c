// Feeds files, and the files of folders, to a fuzz entry: replays a finding with any compiler.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
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
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            feed(argv[i]);
            ++count;
            continue;
        }
        for (const auto& entry : fs::directory_iterator(argv[i])) {
            feed(entry.path());
            ++count;
        }
    }
    std::printf("%zu inputs\n", count);
    return count > 0 ? 0 : 1;
}
