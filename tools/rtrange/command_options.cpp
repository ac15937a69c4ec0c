#include "tools/rtrange/command_options.hpp"

#include <cmath>
#include <vector>

#include <fmt/format.h>

#include "zel/format_type.h"

template <>
bool CLI::detail::lexical_cast(const std::string& argument, std::filesystem::path& file) {
    file = std::u8string(argument.begin(), argument.end());
    return true;
}

namespace rtrange {
namespace {

/// Removes the spaces around a name in a list such as "heading, roll".
std::string without_spaces(const std::string& name) {
    const std::size_t first = name.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : name.substr(first, name.find_last_not_of(' ') - first + 1);
}

/// An option that takes names separated by commas.
CLI::Option* add_names(CLI::App& parser, const char* option, std::vector<std::string>& names,
                       const char* help) {
    return parser.add_option(option, names, help)
        ->delimiter(',')
        ->allow_extra_args(false) // a capture may come next
        ->type_name("NAME,...")
        ->transform(without_spaces, "");
}

void add_times(CLI::App& parser, selection_options& options) {
    parser
        .add_option("--from", options.from,
                    "Only rows from this time on: seconds (12.5) or minutes and seconds (1:30) "
                    "since the first frame, or UTC")
        ->type_name("TIME")
        ->check(fault_of_time, "");
    parser.add_option("--to", options.to, "Only rows before this time")
        ->type_name("TIME")
        ->check(fault_of_time, "");
}

std::string fault_of_gap(const std::string& text) {
    double seconds = -1.0;
    if (CLI::detail::lexical_cast(text, seconds) && seconds >= 0.0 && std::isfinite(seconds))
        return {};
    return fmt::format("'{}' is not a number of seconds; give 0 or more", text);
}

} // namespace

void add_overwrite(CLI::App& parser, bool& overwrite) {
    parser.add_flag("--overwrite", overwrite, "Replace an earlier result of rtrange");
}

CLI::Option* add_captures(CLI::App& parser, run_options& options) {
    return parser
        .add_option("CAPTURE", options.captures, "pcap or pcapng files, or - for standard input")
        ->type_name("FILE");
}

void add_source(CLI::App& parser, decode_options& options) {
    CLI::Option* const captures = add_captures(parser, options.run);
    CLI::Option* const live =
        parser
            .add_option("-i,--interface", options.interface_name,
                        "Decode live from this network interface until Ctrl-C")
            ->check([](const std::string& name) { return name.empty() ? "the name is empty" : ""; },
                    "")
            ->type_name("NAME")
            ->excludes(captures);
    parser.callback([captures, live] {
        if (captures->empty() && live->empty())
            throw CLI::RequiredError("CAPTURE or --interface");
    });
}

void add_tables(CLI::App& parser, decode_options& options, const char* output_help,
                const char* samples_help) {
    parser
        .add_option("--as", options.kind,
                    "Output format: a folder of CSV files, an HDF5 file, or a MAT file")
        ->check(
            [](const std::string& kind) {
                return kind == "csv" || kind == "hdf5" || kind == "mat" ? ""
                                                                        : "use csv, hdf5 or mat";
            },
            "{csv,hdf5,mat}")
        ->capture_default_str();
    parser.add_option("-o,--output", options.output, output_help)->type_name("PATH");
    parser.add_flag("--samples", options.run.samples, samples_help);
    add_overwrite(parser, options.overwrite);
}

void add_content(CLI::App& parser, selection_options& options, const char* fields_help) {
    add_names(parser, "--fields", options.fields, fields_help)->check(fault_of_field, "");
    add_names(parser, "--units", options.units,
              "Only these units: hunter, target1 to target4, rcom, unidentified")
        ->check(fault_of_unit, "");
}

void add_decoder(CLI::App& parser, run_options& options, const char* restart_gap_help) {
    parser
        .add_option("--format", options.format,
                    "Format type of the raw packages that the plug-in is given")
        ->check(CLI::IsMember({ZEL_FORMAT_TYPE_RTRANGE, ZEL_FORMAT_TYPE_ETH_RTRANGE}))
        ->capture_default_str();
    parser.add_option("--restart-gap", options.restart_gap_s, restart_gap_help)
        ->check(fault_of_gap, "")
        ->type_name("SECONDS");
    parser.add_option("--plugin", options.plugin, plugin_help)->type_name("FILE");
    parser
        .add_option("--summary", options.summary,
                    "Also write the summary of the run to this JSON file, even if the run fails")
        ->type_name("FILE");
    parser.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
}

void add_run(CLI::App& parser, run_options& options) {
    add_content(parser, options.selection, "Only these fields, for example heading,roll");
    add_times(parser, options.selection);
    add_decoder(parser, options,
                "Start a new decoder after a gap of this many seconds; 0: never (default: 5; 0 in "
                "the view record)");
    parser
        .add_option("--view", options.view,
                    "measured: what the packets say, unknown values empty; record: the plug-in's "
                    "records bit for bit")
        ->check(CLI::IsMember({"measured", "record"}))
        ->capture_default_str();
}

} // namespace rtrange
