#include "tools/rtrange/report/report_summary.hpp"

#include <cstddef>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tools/rtrange/decode_summary.hpp"
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

json fates_as_json(const frame_fates& fates) {
    json result = json::array();
    for (const counted_fate& fate : counted_fates(fates))
        result.push_back({{"count", fate.count}, {"what", fate.what}});
    return result;
}

json units_as_json(const frame_fates& fates, std::uint64_t zero_ns) {
    json result = json::array();
    for (const auto& [message, identification] : fates.identifications)
        result.push_back({{"name", unit_and_address(message)},
                          {"time", seconds_between(zero_ns, identification.time_ns)},
                          {"count", identification.count}});
    return result;
}

json steps_as_json(const frame_fates& fates, std::uint64_t zero_ns) {
    json result = json::array();
    for (const frame_fates::step_back& step : fates.first_steps_back)
        result.push_back({{"from", seconds_between(zero_ns, step.from_ns)},
                          {"to", seconds_between(zero_ns, step.to_ns)}});
    return result;
}

json stream_as_json(const report_stream& stream) {
    json columns = json::array();
    for (const report_column& column : stream.columns())
        columns.push_back({{"name", column.name},
                           {"unit", column.unit},
                           {"meaning", column.meaning},
                           {"bits", column.is_double ? 64 : 32}});
    return {{"unit", stream.unit()},
            {"kind", name_of(stream.kind())},
            {"rows", stream.rows()},
            {"columns", columns}};
}

} // namespace

std::string report_summary(const frame_fates& fates, std::uint64_t zero_ns,
                           const std::vector<std::filesystem::path>& captures, bool named_fields,
                           const std::vector<std::unique_ptr<report_stream>>& streams) {
    json summary{
        {"version", ZEL_VERSION},
        {"captures", captures_as_json(captures)},
        {"zero_ms", static_cast<double>(zero_ns) * 1e-6},
        {"begin", seconds_between(zero_ns, fates.first_time_ns)},
        {"end", seconds_between(zero_ns, fates.last_time_ns)},
        {"frames", fates.frames},
        {"fates", fates_as_json(fates)},
        {"units", units_as_json(fates, zero_ns)},
        {"steps_back", {{"count", fates.steps_back}, {"first", steps_as_json(fates, zero_ns)}}},
        {"named_fields", named_fields},
        {"streams", json::array()},
    };
    for (const auto& stream : streams)
        summary["streams"].push_back(stream_as_json(*stream));
    if (streams.empty())
        summary["reason_for_no_rows"] = reason_for_no_rows(fates);

    // File names need not be UTF-8, and may look like the end of the element.
    std::string text = summary.dump(-1, ' ', false, json::error_handler_t::replace);
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;)
        text.replace(at, 1, "\\u003c");
    return fmt::format("<script type=\"application/json\" id=\"summary\">{}</script>\n", text);
}

} // namespace rtrange
