// A run while it is driven.
#pragma once

#include <string>
#include <vector>

#include "tools/rtrange/captures/live_capture.hpp"
#include "tools/rtrange/decoding.hpp"

namespace rtrange {

/// Decodes what comes in until an interruption, or until the selection's upper time limit. Gives
/// what ended it before or got lost, one line each. Throws failure when no frame came in at all.
std::vector<std::string> decode_live(live_capture& capture, decoding& run, record_output& output);

} // namespace rtrange
