// The page around the data, written by the build from the files in page/.
#pragma once

#include <string_view>

namespace rtrange {

/// All that stands before the data.
std::string_view report_page_head();

/// All that stands behind them: the plotting library and the scripts.
std::string_view report_page_tail();

} // namespace rtrange
