#include "tools/rtrange/watch/update_feed.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tools/rtrange/report/value_names.hpp"
#include "tools/rtrange/tables/ipv4.hpp"
#include "tools/rtrange/tables/key_figures.hpp"
#include "version.hpp"

namespace rtrange {
namespace {

using nlohmann::json;

std::string event(std::string_view name, const json& data) {
    // File names may be invalid UTF-8.
    return fmt::format("event: {}\ndata: {}\n\n", name,
                       data.dump(-1, ' ', false, json::error_handler_t::replace));
}

/// Whole numbers are shorter without a decimal point. NaN becomes null.
json value_as_json(double value) {
    constexpr double largest = 9007199254740992.0; // 2^53
    if (std::abs(value) <= largest && std::trunc(value) == value)
        return static_cast<std::int64_t>(value);
    return value;
}

json stream_as_json(const stream_rows& stream) {
    const std::size_t width = stream.columns.size();
    const std::size_t rows = stream.rows.numbers.size();
    json values = json::array();
    for (std::size_t column = 0; column < width; ++column) {
        json::array_t cells;
        cells.reserve(rows);
        for (std::size_t row = 0; row < rows; ++row)
            cells.push_back(value_as_json(stream.rows.values[row * width + column]));
        values.push_back(std::move(cells));
    }
    return {{"unit", stream.stream.first},
            {"kind", name_of(stream.stream.second)},
            {"columns", stream.columns},
            {"values", std::move(values)}};
}

/// Packets in the last full second before `now_s`.
std::uint64_t rows_per_second(const sender_status& sender, double now_s) {
    const auto full = static_cast<std::int64_t>(std::floor(now_s)) - 1;
    if (full == sender.second)
        return sender.rows[1];
    return full == sender.second - 1 ? sender.rows[0] : 0;
}

json senders_as_json(const std::vector<sender_status>& senders, double now_s) {
    json result = json::array();
    for (const sender_status& sender : senders)
        result.push_back({{"unit", sender.stream.first},
                          {"kind", name_of(sender.stream.second)},
                          {"last", sender.last_s},
                          {"per_second", rows_per_second(sender, now_s)}});
    return result;
}

json units_as_json(const known_addresses& addresses) {
    json result = json::array();
    for (std::size_t unit = 0; unit < addresses.size(); ++unit)
        if (addresses[unit])
            result.push_back({{"unit", table_descriptions()[packet_table(unit)].unit},
                              {"address", ipv4_text(*addresses[unit])}});
    return result;
}

const char* state_of(const run_status& status) {
    if (status.has_ended)
        return "ended";
    return status.zero_ns ? "running" : "waiting";
}

} // namespace

update_feed::update_feed(const live_history& history, watched_run run)
    : history_(history), run_(std::move(run)), clock_(run_.speed) {
    const auto begin = std::chrono::system_clock::now().time_since_epoch();
    start_ = event("start", {{"version", ZEL_VERSION},
                             {"run", std::to_string(begin.count())},
                             {"title", run_.title},
                             {"live", run_.live},
                             {"speed", run_.speed},
                             {"value_names", value_names_as_json()},
                             {"key_figures", key_figures_as_json("measured")}});
}

std::shared_ptr<const update> update_feed::next(std::uint64_t after) {
    const std::scoped_lock lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    if (now >= next_interval_) {
        next_interval_ = now + interval;
        last_ = history_.newest();
        made_.clear();
    }
    const auto found =
        std::ranges::find_if(made_, [&](const auto& made) { return made->after == after; });
    if (found != made_.end())
        return *found;
    made_.push_back(make(after));
    return made_.back();
}

std::shared_ptr<const update> update_feed::make(std::uint64_t after) const {
    const history_part part = history_.part(after, last_);
    const run_status& status = part.status;
    const double now = now_s(status);
    json streams = json::array();
    for (const stream_rows& stream : part.streams)
        streams.push_back(stream_as_json(stream));
    const json zero_ms =
        status.zero_ns ? json(static_cast<double>(*status.zero_ns) * 1e-6) : json();
    return std::make_shared<update>(
        update{after, std::max(after, last_),
               event("update", {{"now", now},
                                {"zero_ms", zero_ms},
                                {"state", state_of(status)},
                                {"epoch", status.epoch},
                                {"frames", status.frames},
                                {"decoded", status.decoded},
                                {"refused", status.refused},
                                {"notes", status.notes},
                                {"units", units_as_json(status.addresses)},
                                {"senders", senders_as_json(part.senders, now)},
                                {"streams", std::move(streams)}})});
}

/// NaN before the first frame.
double update_feed::now_s(const run_status& status) const {
    if (!status.zero_ns)
        return std::numeric_limits<double>::quiet_NaN();
    const auto wall_clock = std::chrono::system_clock::now().time_since_epoch();
    const std::uint64_t now_ns =
        run_.live ? static_cast<std::uint64_t>(std::chrono::nanoseconds(wall_clock).count())
                  : clock_.now_ns();
    return static_cast<double>(static_cast<std::int64_t>(now_ns - *status.zero_ns)) * 1e-9;
}

} // namespace rtrange
