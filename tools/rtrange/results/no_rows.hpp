// Runs without any row.
#pragma once

#include <string>
#include <vector>

#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/run_options.hpp"

namespace rtrange {

/// If no decoded row was written, prints the summary and the faults of the run, and throws failure,
/// which says why and what there was: "no rows match --from 100: the capture ends at 11.99 s".
void end_without_rows(const frame_decoder& decoder, const run_options& options,
                      const std::vector<std::string>& faults);

} // namespace rtrange
