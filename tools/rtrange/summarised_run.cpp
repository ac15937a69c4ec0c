#include "tools/rtrange/summarised_run.hpp"

#include <cstdio>
#include <exception>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/outputs/output_file.hpp"
#include "tools/rtrange/results/result_file.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/summary_json.hpp"

namespace rtrange {
namespace {

void write_summary(result_file& result, const std::string& text) {
    output_file file(result.path());
    file.write(text);
    file.close();
    result.complete();
}

} // namespace

void check_summary(const run_options& options, const std::filesystem::path& result) {
    const auto absolute = [](const std::filesystem::path& path) {
        return (std::filesystem::absolute(path) / "").lexically_normal();
    };
    if (!options.summary.empty() && absolute(options.summary) == absolute(result))
        throw usage_failure(fmt::format(
            "'{}' is the name of the result; give the summary another one", result.string()));
}

int run_with_summary(const summarised_run& run, const std::function<int(run_state&)>& work) {
    if (run.options.quiet)
        silence_standard_output();
    run_state state;
    const std::filesystem::path& target = run.options.summary;
    if (target.empty())
        return work(state);
    check_output(target, run.options.captures);
    result_file result(target, summary_file,
                       {.overwrite = run.overwrite, .replace_when_interrupted = true});
    run_end end{exit_success, {}};
    std::exception_ptr thrown;
    try {
        end.exit_code = work(state);
        flush_standard_output();
    } catch (const std::exception& error) {
        thrown = std::current_exception();
        end = {exit_code_of(error), {message_of(error)}};
    }
    end.reasons.insert(end.reasons.begin(), state.faults.begin(), state.faults.end());
    try {
        write_summary(result, summary_as_json(run, state, end));
    } catch (const std::exception& error) {
        if (!thrown)
            throw;
        std::fprintf(stderr, "rtrange: %s\n", message_of(error));
    }
    if (thrown)
        std::rethrow_exception(thrown);
    return end.exit_code;
}

} // namespace rtrange
