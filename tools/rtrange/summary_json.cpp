#include "tools/rtrange/summary_json.hpp"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/plugin_file.hpp"
#include "tools/rtrange/report/report_summary.hpp"
#include "tools/rtrange/times.hpp"
#include "version.hpp"

namespace rtrange {
namespace {

using json = nlohmann::ordered_json;

json text_or_null(std::string_view text) {
    return text.empty() ? json() : json(text);
}

/// The value of a key in "key=value" lines.
std::string_view value_of(std::string_view key, std::string_view lines) {
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        if (line.substr(0, line.find('=')) == key && line.size() > key.size())
            return line.substr(key.size() + 1);
    }
    return {};
}

json plugin_as_json(const run_options& options, const frame_decoder& decoder) {
    const auto file = options.plugin.empty() ? default_plugin_file() : options.plugin;
    return {{"file", file.string()},
            {"version", text_or_null(value_of("zel-product-version", decoder.plugin_metadata()))}};
}

json captures_as_json(const run_options& options) {
    json captures = json::array();
    for (const auto& file : options.captures)
        captures.push_back(file.string());
    return captures;
}

json selection_as_json(const selection_options& options) {
    return {{"fields", options.fields},
            {"units", options.units},
            {"from", text_or_null(options.from)},
            {"to", text_or_null(options.to)}};
}

json remarks_as_json(const frame_outcomes::remarks& remarks) {
    json result = json::array();
    for (const auto& [key, remark] : remarks)
        result.push_back({{"reason", remark.message},
                          {"count", remark.count},
                          {"first_frame", remark.first_frame},
                          {"capture", remark.capture}});
    return result;
}

json frames_as_json(const frame_outcomes& outcomes) {
    std::uint64_t refused = 0;
    for (const auto& [key, remark] : outcomes.refusals)
        refused += remark.count;
    return {{"total", outcomes.frames},
            {"decoded", outcomes.decoded},
            {"not_ipv4", outcomes.not_ipv4},
            {"not_udp", outcomes.not_udp},
            {"other_ports", outcomes.other_ports},
            {"ignored_rcom", outcomes.ignored_rcom},
            {"refused", refused},
            {"with_vlan_tag", outcomes.with_vlan_tag},
            {"linux_cooked", outcomes.linux_cooked},
            {"raw_ip", outcomes.raw_ip},
            {"cut", outcomes.cut}};
}

json tables_as_json(const std::vector<written_table>& tables) {
    json result = json::array();
    for (const written_table& table : tables)
        result.push_back({{"name", table.name}, {"place", table.place}, {"rows", table.rows}});
    return result;
}

json figures_as_json(const std::vector<unit_figures>& units) {
    json result = json::object();
    for (const auto& [unit, figures] : units)
        for (const auto& [figure, value, time_s] : figures)
            result[unit][std::string(figure->name)] = {{"value", value ? json(*value) : json()},
                                                       {"unit", figure->unit},
                                                       {"time_s", value ? json(time_s) : json()}};
    return result;
}

const char* outcome_of(const run_state& state, const run_end& end) {
    if (end.exit_code == exit_success)
        return "complete";
    return state.tables.empty() ? "failed" : "incomplete";
}

/// The members about what was decoded, null before there is a decoder.
void add_decoded(const run_state& state, json& summary) {
    for (const char* const member :
         {"start", "start_ns", "duration_s", "frames", "refused", "decoded_in_part", "units",
          "restarts", "steps_back", "notes", "key_figures"})
        summary[member] = nullptr;
    if (!state.decoder)
        return;
    const frame_outcomes& outcomes = state.decoder->outcomes();
    const std::uint64_t start_ns = outcomes.first_time_ns;
    if (outcomes.frames > 0) {
        summary["start"] = utc_text(start_ns);
        summary["start_ns"] = start_ns;
        summary["duration_s"] = static_cast<double>(outcomes.last_time_ns - start_ns) * 1e-9;
    }
    summary["frames"] = frames_as_json(outcomes);
    summary["refused"] = remarks_as_json(outcomes.refusals);
    summary["decoded_in_part"] = remarks_as_json(outcomes.decoded_in_part);
    summary["units"] = units_as_json(outcomes, start_ns);
    summary["restarts"] = steps_as_json(outcomes.restarts, outcomes.first_restarts, start_ns);
    summary["steps_back"] = steps_as_json(outcomes.steps_back, outcomes.first_steps_back, start_ns);
    summary["notes"] = run_notes(*state.decoder);
    if (state.figures)
        summary["key_figures"] = figures_as_json(*state.figures);
}

} // namespace

std::string summary_as_json(const summarised_run& run, const run_state& state, const run_end& end) {
    json summary;
    summary["rtrange_summary"] = 1; // first, so that rtrange recognises its own summaries
    summary["command"] = run.command;
    summary["outcome"] = outcome_of(state, end);
    summary["exit_code"] = end.exit_code;
    summary["reasons"] = end.reasons;
    summary["rtrange_version"] = ZEL_VERSION;
    summary["plugin"] = state.decoder ? plugin_as_json(run.options, *state.decoder) : json();
    summary["captures"] = captures_as_json(run.options);
    summary["interface"] = text_or_null(run.interface_name);
    summary["format"] = run.options.format;
    summary["view"] = run.options.view;
    summary["selection"] = selection_as_json(run.options.selection);
    add_decoded(state, summary);
    summary["tables"] = tables_as_json(state.tables);
    // File names may be invalid UTF-8.
    return summary.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

} // namespace rtrange
