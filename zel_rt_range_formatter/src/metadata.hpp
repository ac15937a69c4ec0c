// What the library says about itself.
#pragma once

namespace zel::toolbox::rt_range {

/// key=value lines separated by line feeds; static, and alone in its section.
const char* metadata();

} // namespace zel::toolbox::rt_range
