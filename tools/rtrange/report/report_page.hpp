// The page around the data. The build generates its source from the files in page/.
#pragma once

#include <string_view>

namespace rtrange {

/// The part of the page before the data.
std::string_view report_page_head();

/// The part of the page after the data: the plotting library and the scripts.
std::string_view report_page_tail();

} // namespace rtrange
