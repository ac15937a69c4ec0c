// What to decode, and what to select of it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {

/// Arguments of all commands that decode.
struct run_options {
    std::vector<std::filesystem::path> captures;
    std::string format = "zel.rtrange"; ///< format type of the raw packages made of the frames
    std::filesystem::path plugin;       ///< empty for the plug-in installed with rtrange
    selection_options selection;
};

} // namespace rtrange
