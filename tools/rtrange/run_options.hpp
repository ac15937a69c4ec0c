// What to decode, and what to select of it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tools/rtrange/tables/selection.hpp"
#include "zel/format_type.h"

namespace rtrange {

/// Arguments of all commands that decode.
struct run_options {
    std::vector<std::filesystem::path> captures;
    std::string format = ZEL_FORMAT_TYPE_RTRANGE; ///< format type of the raw packages
    std::filesystem::path plugin;                 ///< empty for the plug-in installed with rtrange
    selection_options selection;
    std::string view = "measured";       ///< or "record"
    bool samples = false;                ///< tables of samples in the view "measured"
    std::optional<double> restart_gap_s; ///< empty for that of the view; 0 never restarts
    bool quiet = false;                  ///< nothing but errors on the terminal
    std::filesystem::path summary;       ///< JSON file; empty for none
};

} // namespace rtrange
