#include "tools/rtrange/watch_command.hpp"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/live_decoding.hpp"
#include "tools/rtrange/outputs/with_key_figures.hpp"
#include "tools/rtrange/report/report_columns.hpp"
#include "tools/rtrange/results/no_rows.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/summarised_run.hpp"
#include "tools/rtrange/watch/live_history.hpp"
#include "tools/rtrange/watch/update_feed.hpp"
#include "tools/rtrange/watch/watch_output.hpp"
#include "tools/rtrange/watch/watch_server.hpp"

namespace rtrange {
namespace {

/// Paces captures, and tells the page of each frame.
class watch_follower final : public run_follower {
public:
    watch_follower(replay_clock& clock, live_history& history, bool has_result)
        : clock_(clock), history_(history), has_result_(has_result) {}

    void wait_for(const captured_frame& frame) override { clock_.wait_for(frame); }
    void finish(const captured_frame& frame) override { history_.finish_frame(frame.time_ns); }

    /// Without tables and summary, nothing is lost when the run ends early.
    bool needs_all_frames() const override { return has_result_; }

private:
    replay_clock& clock_;
    live_history& history_;
    bool has_result_;
};

std::string title_of(const decode_options& options) {
    std::string title = options.interface_name;
    for (const auto& capture : options.run.captures)
        title += fmt::format("{}{}", title.empty() ? "" : ", ", capture.filename().string());
    return title;
}

/// The page needs fields that the tables may not have.
run_options with_fields_of_page(run_options run) {
    run.selection.also_fields = default_fields();
    run.selection.also_fields.emplace_back("source_ip");
    return run;
}

void announce(const listen_address& address) {
    print("Watch at http://{}/\n", text_of(local_address(address)));
    if (is_wildcard(address))
        print("Anybody who can reach port {0} of this machine can watch; on other machines, open "
              "its IP address with port {0}\n",
              address.port);
    else if (!is_loopback(address))
        print("Anybody who can reach port {} of {} can watch\n", address.port, address.host);
    flush_standard_output();
}

void show_end_until_interrupted() {
    if (interrupted())
        return;
    print("The run has ended; its end is shown until Ctrl-C\n");
    flush_standard_output();
    while (!interrupted())
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

int watch_into(run_state& state, const watch_options& options) {
    const decode_options& tables = options.decode;
    const bool has_tables = !tables.output.empty();
    const bool has_result = has_tables || !tables.run.summary.empty();
    const auto file = has_tables ? output_of(tables) : std::filesystem::path();
    auto captures = open_captures(tables.run.captures);
    if (has_tables)
        check_names(file, tables);
    std::optional<live_capture> live;
    if (captures.empty())
        live.emplace(tables.interface_name);
    const std::vector<std::string>& fields = tables.run.selection.fields;
    frame_decoder& decoder = state.decoder.emplace(with_fields_of_page(tables.run));
    const table_columns columns = columns_of_tables(decoder.columns(), fields);
    live_history history(decoder, fields);
    update_feed feed(history, {title_of(tables), live.has_value(), options.speed});
    watch_server server(options.listen, feed);

    catch_interruptions();
    const auto written = has_tables ? create_output(file, tables, columns) : nullptr;
    watch_output output(history, written.get(), columns);
    with_key_figures rows(output, decoder.columns());
    watch_follower follower(feed.clock(), history, has_result);
    server.start();
    announce(server.address());
    state.faults = live ? decode_live(*live, decoder, rows, &follower)
                        : decode_captures(captures, decoder, rows, &follower);
    if (has_result || !interrupted())
        end_without_rows(decoder, tables.run, state.faults);
    output.close();
    state.tables = output.tables();
    state.figures = rows.figures(decoder.outcomes());
    history.end(state.faults);
    show_end_until_interrupted();
    print_summary(decoder, state.tables, *state.figures);
    return end_with_faults(state.faults);
}

} // namespace

int watch(const watch_options& options) {
    const decode_options& tables = options.decode;
    return run_with_summary({"watch", tables.run, tables.interface_name, tables.overwrite},
                            [&](run_state& state) { return watch_into(state, options); });
}

} // namespace rtrange
