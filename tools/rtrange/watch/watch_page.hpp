// The live page. The build generates its source from the files in page/.
#pragma once

#include <string_view>

namespace rtrange {

/// The whole page.
std::string_view watch_page();

} // namespace rtrange
