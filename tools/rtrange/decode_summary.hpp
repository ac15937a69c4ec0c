// The end of a decoding.
#pragma once

#include <vector>

#include "tools/rtrange/csv_file.hpp"
#include "tools/rtrange/frame_fates.hpp"

namespace rtrange {

/// Prints what became of the frames, and the tables with their numbers of rows.
void print_summary(const frame_fates& fates, const std::vector<const csv_file*>& tables);

} // namespace rtrange
