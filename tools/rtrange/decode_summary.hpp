// The summary of a run.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/tables/key_figure_collector.hpp"

namespace rtrange {

/// The number of frames with one outcome.
struct counted_outcome {
    std::uint64_t count;
    std::string what; ///< human-readable
};

/// All outcomes that frames of the run had.
std::vector<counted_outcome> counted_outcomes(const frame_outcomes& outcomes);

/// What a reader of the output has to know of the run, one sentence each: new decoders after gaps,
/// and what the view notes.
std::vector<std::string> run_notes(const frame_decoder& decoder);

/// Prints the outcomes, the units, the notes, the key figures, if any, and the tables, if any, with
/// their numbers of rows.
void print_summary(const frame_decoder& decoder, const std::vector<written_table>& tables,
                   const std::vector<unit_figures>& figures = {});

/// Prints on standard error, one line each, what kept the input from being read to its end. Returns
/// the exit code of the run.
int end_with_faults(const std::vector<std::string>& faults);

} // namespace rtrange
