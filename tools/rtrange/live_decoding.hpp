// A run while it is driven.
#pragma once

#include <string>
#include <vector>

#include "tools/rtrange/decoding.hpp"

namespace rtrange {

/// Decodes what comes in on a network interface until an interruption, or until the selection's
/// upper time limit. Gives what ended it before, one line or none. Throws failure when the
/// interface cannot be captured from, or no frame came in at all.
std::vector<std::string> decode_live(const std::string& name, decoding& run, record_output& output);

} // namespace rtrange
