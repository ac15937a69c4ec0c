#include "tools/rtrange/plugin_file.hpp"

namespace rtrange {

std::filesystem::path default_plugin_file() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() /
           "zel_rt_range_formatter.so";
}

} // namespace rtrange
