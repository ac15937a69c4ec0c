// The end of a decoding.
#pragma once

#include <string>
#include <vector>

#include "tools/rtrange/frame_fates.hpp"
#include "tools/rtrange/outputs/record_output.hpp"

namespace rtrange {

/// Prints what became of the frames, and the tables with their numbers of rows.
void print_summary(const frame_fates& fates, const std::vector<written_table>& tables);

/// Prints what kept the input from being read to its end, after the summary. Gives the exit code.
int end_with_faults(const std::vector<std::string>& faults);

} // namespace rtrange
