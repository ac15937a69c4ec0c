// The end of a decoding.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rtrange/frame_fates.hpp"
#include "tools/rtrange/outputs/record_output.hpp"

namespace rtrange {

/// So many frames met this fate.
struct counted_fate {
    std::uint64_t count;
    std::string what; ///< for people
};

/// What became of the frames, without fates that none has met.
std::vector<counted_fate> counted_fates(const frame_fates& fates);

/// "target 1 (195.0.0.21)" of "Successfully identified IP for target 1 (195.0.0.21)."
std::string unit_and_address(std::string_view message);

/// Why a run that has come to an end has no rows, for people.
std::string_view reason_for_no_rows(const frame_fates& fates);

/// Prints what became of the frames, and the tables with their numbers of rows.
void print_summary(const frame_fates& fates, const std::vector<written_table>& tables);

/// Prints what kept the input from being read to its end, after the summary. Gives the exit code.
int end_with_faults(const std::vector<std::string>& faults);

} // namespace rtrange
