#include "tools/rtrange/plugin_file.hpp"

#include "tools/rtrange/platform.hpp"

namespace rtrange {

std::filesystem::path default_plugin_file() {
    const std::filesystem::path folder = program_file().parent_path();
    const std::filesystem::path packaged = folder.parent_path() / "plugin" / PLUGIN_NAME;
    return exists(packaged) ? packaged : folder / PLUGIN_NAME;
}

} // namespace rtrange
