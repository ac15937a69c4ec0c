// The metadata text of the library.
#pragma once

namespace zel::toolbox::rt_range {

/// key=value lines separated by line feeds; static, the only content of its section.
const char* metadata();

} // namespace zel::toolbox::rt_range
