#include "tools/rtrange/report/report_summary.hpp"

#include <cstddef>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/report/value_names.hpp"
#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/tables/key_figures.hpp"
#include "tools/rtrange/tables/table.hpp"
#include "version.hpp"

namespace rtrange {
namespace {

using nlohmann::json;

double seconds_between(std::uint64_t begin_ns, std::uint64_t end_ns) {
    return static_cast<double>(static_cast<std::int64_t>(end_ns - begin_ns)) * 1e-9;
}

json captures_as_json(const std::vector<std::filesystem::path>& captures) {
    json result = json::array();
    for (const auto& file : captures)
        result.push_back(file.filename().string());
    return result;
}

json outcomes_as_json(const frame_outcomes& outcomes) {
    json result = json::array();
    for (const counted_outcome& outcome : counted_outcomes(outcomes))
        result.push_back({{"count", outcome.count}, {"what", outcome.what}});
    return result;
}

json stream_as_json(const report_stream& stream) {
    json columns = json::array();
    for (const report_column& column : stream.columns())
        columns.push_back({{"name", column.name},
                           {"unit", column.unit},
                           {"meaning", column.meaning},
                           {"bits", column.is_double ? 64 : 32},
                           {"runs", column.in_runs}});
    return {{"unit", stream.unit()},
            {"kind", name_of(stream.kind())},
            {"rows", stream.rows()},
            {"columns", columns}};
}

} // namespace

json units_as_json(const frame_outcomes& outcomes, std::uint64_t zero_ns) {
    json result = json::array();
    for (const auto& [identified, identification] : outcomes.identifications)
        result.push_back({{"unit", table_descriptions()[packet_table(identified.unit)].unit},
                          {"address", ipv4_text(identified.address)},
                          {"time", seconds_between(zero_ns, identification.time_ns)},
                          {"count", identification.count}});
    return result;
}

json steps_as_json(std::uint64_t count, const std::vector<frame_outcomes::time_step>& first,
                   std::uint64_t zero_ns) {
    json result{{"count", count}, {"first", json::array()}};
    for (const frame_outcomes::time_step& step : first)
        result["first"].push_back({{"from", seconds_between(zero_ns, step.from_ns)},
                                   {"to", seconds_between(zero_ns, step.to_ns)}});
    return result;
}

std::string report_summary(const frame_outcomes& outcomes, std::uint64_t zero_ns,
                           const report_header& header,
                           const std::vector<std::unique_ptr<report_stream>>& streams) {
    json summary{
        {"version", ZEL_VERSION},
        {"captures", captures_as_json(header.captures)},
        {"view", header.view},
        {"notes", header.notes},
        {"zero_ms", static_cast<double>(zero_ns) * 1e-6},
        {"begin", seconds_between(zero_ns, outcomes.first_time_ns)},
        {"end", seconds_between(zero_ns, outcomes.last_time_ns)},
        {"frames", outcomes.frames},
        {"outcomes", outcomes_as_json(outcomes)},
        {"units", units_as_json(outcomes, zero_ns)},
        {"steps_back", steps_as_json(outcomes.steps_back, outcomes.first_steps_back, zero_ns)},
        {"restarts", steps_as_json(outcomes.restarts, outcomes.first_restarts, zero_ns)},
        {"named_fields", header.named_fields},
        {"value_names", value_names_as_json()},
        {"key_figures", key_figures_as_json(header.view)},
        {"streams", json::array()},
    };
    for (const auto& stream : streams)
        summary["streams"].push_back(stream_as_json(*stream));

    // File names may be invalid UTF-8, and may contain "</script>".
    std::string text = summary.dump(-1, ' ', false, json::error_handler_t::replace);
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;)
        text.replace(at, 1, "\\u003c");
    return fmt::format("<script type=\"application/json\" id=\"summary\">{}</script>\n", text);
}

} // namespace rtrange
