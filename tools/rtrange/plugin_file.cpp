#include "tools/rtrange/plugin_file.hpp"

#include "tools/rtrange/platform.hpp"

namespace rtrange {

std::filesystem::path default_plugin_file() {
    const std::filesystem::path folder = program_file().parent_path();
    for (const char* const packaged : {"plugin", "lib/rtrange"}) {
        std::filesystem::path file = folder.parent_path() / packaged / PLUGIN_NAME;
        if (exists(file))
            return file;
    }
    return folder / PLUGIN_NAME;
}

} // namespace rtrange
