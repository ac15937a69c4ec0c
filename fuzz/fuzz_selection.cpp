// Any arguments of a command that decodes.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "fuzz/input.hpp"
#include "tools/rtrange/command_options.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/run_options.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace {

using namespace rtrange;

/// The options of a command, which can be parsed again and again.
class command {
public:
    command() {
        app_.allow_windows_style_options(false);
        add_captures(app_, parsed_);
        add_run(app_, parsed_);
    }

    /// Throws CLI::ParseError.
    run_options parse(const std::vector<std::string>& arguments) {
        parsed_ = {};
        app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return parsed_;
    }

private:
    CLI::App app_{"", "rtrange"};
    run_options parsed_;
};

bool contains(const std::vector<std::string_view>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

std::vector<std::string> without_repetition(const std::vector<std::string>& names) {
    std::vector<std::string> result;
    for (const std::string& name : names)
        if (std::ranges::find(result, name) == result.end())
            result.push_back(name);
    return result;
}

void expect_valid(const run_options& options) {
    const auto& fields = selectable_fields();
    const auto& units = selectable_units();
    for (const std::string& name : options.selection.fields)
        EXPECT_TRUE(contains(fields, name)) << name;
    for (const std::string& name : options.selection.units)
        EXPECT_TRUE(contains(units, name)) << name;
    for (const std::string& time : {options.selection.from, options.selection.to})
        EXPECT_TRUE(time.empty() || parse_time(time)) << time;
    EXPECT_TRUE(options.view == "measured" || options.view == "record");
    EXPECT_TRUE(options.format == ZEL_FORMAT_TYPE_RTRANGE ||
                options.format == ZEL_FORMAT_TYPE_ETH_RTRANGE);
    const double gap_s = options.restart_gap_s.value_or(0.0);
    EXPECT_TRUE(gap_s >= 0.0 && std::isfinite(gap_s)) << gap_s;
}

/// The arguments that stand for the options, each in one form.
std::vector<std::string> arguments_of(const run_options& options) {
    std::vector<std::string> arguments;
    const auto add = [&arguments](const char* option, const std::string& value) {
        if (!value.empty())
            arguments.push_back(fmt::format("--{}={}", option, value));
    };
    const auto& selected = options.selection;
    add("fields", fmt::format("{}", fmt::join(selected.fields, " ,  ")));
    add("units", fmt::format("{}", fmt::join(selected.units, ",")));
    add("from", selected.from);
    add("to", selected.to);
    add("view", options.view);
    add("format", options.format);
    if (options.restart_gap_s)
        add("restart-gap", fmt::format("{}", *options.restart_gap_s));
    return arguments;
}

void expect_same(const run_options& one, const run_options& other) {
    EXPECT_EQ(one.selection.fields, other.selection.fields);
    EXPECT_EQ(one.selection.units, other.selection.units);
    EXPECT_EQ(one.selection.from, other.selection.from);
    EXPECT_EQ(one.selection.to, other.selection.to);
    EXPECT_EQ(one.view, other.view);
    EXPECT_EQ(one.format, other.format);
    EXPECT_EQ(one.restart_gap_s, other.restart_gap_s);
}

void expect_round_trip(command& parser, const run_options& options) {
    const std::vector<std::string> arguments = arguments_of(options);
    try {
        expect_same(parser.parse(arguments), options);
    } catch (const CLI::Error& fault) {
        ADD_FAILURE() << fmt::format("{}: {}", fmt::join(arguments, " "), fault.what());
    }
}

/// Whether no time is selected, as far as that is known before the first frame, from which times
/// without a date count.
bool is_without_time(const selection_options& options) {
    if (options.to.empty())
        return false;
    const run_time first{0, false};
    const run_time from = options.from.empty() ? first : parse_time(options.from).value();
    const run_time to = parse_time(options.to).value();
    return from.since_start == to.since_start && from.time_ns >= to.time_ns;
}

void expect_times_refused(const selection_options& options) {
    try {
        const selection selected(options);
        ADD_FAILURE() << fmt::format("from '{}' to '{}'", options.from, options.to);
    } catch (const usage_failure& fault) {
        EXPECT_EQ(std::string_view(fault.what()), "--from must be before --to");
    }
}

void expect_selected(const selection_options& options) {
    const auto& fields = selectable_fields();
    const auto& units = selectable_units();
    const selection selected(options);
    for (const std::string_view unit : units)
        EXPECT_EQ(selected.has_unit(unit),
                  options.units.empty() ||
                      std::ranges::find(options.units, unit) != options.units.end());
    EXPECT_TRUE(selected.has_unit(""));

    const auto columns =
        selected.in_order(std::span<const std::string_view>(fields), std::identity());
    if (options.fields.empty()) {
        EXPECT_EQ(columns, fields);
        return;
    }
    auto wanted = options.fields;
    wanted.insert(wanted.end(), options.also_fields.begin(), options.also_fields.end());
    EXPECT_EQ(std::vector<std::string>(columns.begin(), columns.end()), without_repetition(wanted));
}

/// A refusal has one line, but quotes arguments with their line breaks.
void expect_one_line(std::string_view refusal, const std::vector<std::string>& arguments) {
    std::ptrdiff_t line_breaks = 0;
    for (const std::string& argument : arguments)
        line_breaks += std::ranges::count(argument, '\n');
    EXPECT_FALSE(refusal.empty());
    EXPECT_LE(std::ranges::count(refusal, '\n'), line_breaks) << refusal;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Making a command takes as long as parsing some dozen arguments, but the library keeps a list
    // of all arguments that a command has parsed.
    constexpr int inputs_per_command = 1000;
    static std::optional<command> current;
    static int inputs = 0;
    if (inputs++ % inputs_per_command == 0)
        current.emplace();
    std::vector<std::string> arguments;
    for (fuzz::input input({data, size}); !input.empty();)
        arguments.push_back(input.text());
    run_options options;
    try {
        options = current->parse(arguments);
    } catch (const CLI::Success&) { // the help is asked for
        return 0;
    } catch (const CLI::ParseError& fault) {
        expect_one_line(fault.what(), arguments);
        return 0;
    }
    expect_valid(options);
    expect_round_trip(*current, options);
    options.selection.also_fields = {"heading", "source_ip"};
    if (is_without_time(options.selection))
        expect_times_refused(options.selection);
    else
        expect_selected(options.selection);
    return 0;
}
