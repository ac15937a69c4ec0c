// Runs whose summary may be wanted in a file, whatever ends them.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/run_options.hpp"
#include "tools/rtrange/tables/key_figure_collector.hpp"

namespace rtrange {

/// What is run.
struct summarised_run {
    std::string_view command; ///< for example "decode"
    const run_options& options;
    std::string_view interface_name; ///< empty for captures
    bool overwrite;                  ///< an earlier summary may be replaced
};

/// What a run has come to so far.
struct run_state {
    std::optional<frame_decoder> decoder; ///< once the plug-in is loaded
    std::vector<std::string> faults;      ///< what kept the input from being read to its end
    std::optional<std::vector<unit_figures>> figures; ///< if they were looked for
    std::vector<written_table> tables;                ///< of the result, once it is complete
};

/// How a run ended.
struct run_end {
    int exit_code;
    std::vector<std::string> reasons; ///< the lines on standard error
};

/// Throws usage_failure when the result and the summary would have the same name.
void check_summary(const run_options& options, const std::filesystem::path& result);

/// Does the work of a run, which fills the state, and returns its exit code. Keeps standard output
/// silent if the options say so. If they name a summary, it is written when the work is done, also
/// when it throws; the exception then passes on. Throws failure, before the work, when the summary
/// may not be written.
int run_with_summary(const summarised_run& run, const std::function<int(run_state&)>& work);

} // namespace rtrange
