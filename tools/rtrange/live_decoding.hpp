// Decoding of what a network interface receives.
#pragma once

#include <string>
#include <vector>

#include "tools/rtrange/captures/live_capture.hpp"
#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/run_follower.hpp"

namespace rtrange {

/// Decodes the frames that an interface receives until an interruption, or until the selection's
/// upper time limit. Returns what ended it early or was lost, one line each. Throws failure when no
/// frame was received at all.
std::vector<std::string> decode_live(live_capture& capture, frame_decoder& decoder,
                                     table_output& output, run_follower* follower = nullptr);

} // namespace rtrange
