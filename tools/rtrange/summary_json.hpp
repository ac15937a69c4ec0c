// The summary of a run for programs.
#pragma once

#include <string>

#include "tools/rtrange/summarised_run.hpp"

namespace rtrange {

/// The summary as JSON text. What a run has not come to is null.
std::string summary_as_json(const summarised_run& run, const run_state& state, const run_end& end);

} // namespace rtrange
