// Why frames were refused, in plain words.
#pragma once

#include <string>

namespace rtrange {

/// What the decoder's log message about a frame means. A message of another plug-in stays as it is.
std::string plain_reason(const std::string& message);

} // namespace rtrange
