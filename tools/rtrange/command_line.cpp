#include "tools/rtrange/command_line.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <system_error>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tools/rtrange/decode_command.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/fields_command.hpp"
#include "tools/rtrange/info_command.hpp"
#include "tools/rtrange/plugin_file.hpp"
#include "tools/rtrange/report_command.hpp"
#include "tools/rtrange/simulate_command.hpp"
#include "tools/rtrange/watch_command.hpp"
#include "version.hpp"
#include "zel/format_type.h"

/// Arguments are UTF-8. A path made of a plain string would be in the system's code page on
/// Windows.
template <>
bool CLI::detail::lexical_cast(const std::string& argument, std::filesystem::path& file) {
    file = std::u8string(argument.begin(), argument.end());
    return true;
}

namespace rtrange {
namespace {

/// A command of the program: its options, and what to call when they have been parsed.
struct command {
    CLI::App* parser;
    std::function<int()> run; ///< returns the exit code
};

constexpr const char* plugin_help = "Plug-in file (default: the one installed with rtrange)";

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

void add_overwrite(CLI::App& parser, bool& overwrite) {
    parser.add_flag("--overwrite", overwrite, "Replace an earlier result of rtrange");
}

void add_content(CLI::App& parser, selection_options& options) {
    add_names(parser, "--fields", options.fields, "Only these fields, for example heading,roll")
        ->check(fault_of_field, "");
    add_names(parser, "--units", options.units,
              "Only these units: hunter, target1 to target4, rcom, unidentified")
        ->check(fault_of_unit, "");
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

void add_decoder(CLI::App& parser, run_options& options) {
    parser
        .add_option("--format", options.format,
                    "Format type of the raw packages that the plug-in is given")
        ->check(CLI::IsMember({ZEL_FORMAT_TYPE_RTRANGE, ZEL_FORMAT_TYPE_ETH_RTRANGE}))
        ->capture_default_str();
    parser
        .add_option("--restart-gap", options.restart_gap_s,
                    "Start a new decoder after a gap of this many seconds; 0: never (default: 5; "
                    "0 in the view record)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("SECONDS");
    parser.add_option("--plugin", options.plugin, plugin_help)->type_name("FILE");
}

void add_run(CLI::App& parser, run_options& options) {
    add_content(parser, options.selection);
    add_times(parser, options.selection);
    add_decoder(parser, options);
    parser
        .add_option("--view", options.view,
                    "measured: what the packets say, unknown values empty; record: the plug-in's "
                    "records bit for bit")
        ->check(CLI::IsMember({"measured", "record"}))
        ->capture_default_str();
}

/// The frames that are decoded: those of captures, or of an interface.
void add_source(CLI::App& parser, decode_options& options) {
    CLI::Option* const captures =
        parser.add_option("CAPTURE", options.run.captures, "pcap or pcapng files")
            ->type_name("FILE");
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

void add_tables(CLI::App& parser, decode_options& options, const char* output_help) {
    parser
        .add_option("--as", options.kind, "Output format: a folder of CSV files, or an HDF5 file")
        ->check(
            [](const std::string& kind) {
                return kind == "csv" || kind == "hdf5" ? "" : "use csv or hdf5";
            },
            "")
        ->capture_default_str();
    parser.add_option("-o,--output", options.output, output_help)->type_name("PATH");
    parser.add_flag("--samples", options.run.samples,
                    "Also write the tables of filtered samples (always in the view record)");
    add_overwrite(parser, options.overwrite);
}

command add_decode(CLI::App& app) {
    const auto options = std::make_shared<decode_options>();
    CLI::App* const parser =
        app.add_subcommand("decode", "Decode captures, or live traffic, into CSV or HDF5 tables");
    add_source(*parser, *options);
    add_tables(*parser, *options,
               "Folder of the CSV files, or HDF5 file (default: run or run.h5 for run.pcap)");
    add_run(*parser, options->run);
    return {parser, [options] { return decode(*options); }};
}

std::string fault_of_speed(const std::string& text) {
    double speed = -1.0;
    if (CLI::detail::lexical_cast(text, speed) && speed >= 0.0 && std::isfinite(speed))
        return {};
    return fmt::format("'{}' is not a speed; give 1 for as recorded, 20 for twenty times as fast, "
                       "or 0 for as fast as possible",
                       text);
}

command add_watch(CLI::App& app) {
    const auto options = std::make_shared<watch_options>();
    CLI::App* const parser =
        app.add_subcommand("watch", "Show captures, or live traffic, on a live page in a browser");
    add_source(*parser, options->decode);
    parser
        ->add_option_function<std::string>(
            "--listen",
            [options](const std::string& text) {
                options->listen = parse_listen_address(text).value();
            },
            "IP address and port to serve the page at; port 0 for any free one")
        ->check(fault_of_listen_address, "")
        ->type_name("ADDRESS:PORT")
        ->default_str(text_of(options->listen));
    parser
        ->add_option("--speed", options->speed,
                     "How fast captures pass: 1 as recorded, 0 as fast as possible")
        ->check(fault_of_speed, "")
        ->type_name("FACTOR")
        ->capture_default_str();
    add_tables(*parser, options->decode,
               "Also write tables: folder of the CSV files, or HDF5 file");
    for (const char* const name : {"--as", "--samples", "--overwrite"})
        parser->get_option(name)->needs("--output");
    add_content(*parser, options->decode.run.selection);
    add_decoder(*parser, options->decode.run);
    return {parser, [options] { return watch(*options); }};
}

command add_report(CLI::App& app) {
    const auto options = std::make_shared<report_command_options>();
    CLI::App* const parser =
        app.add_subcommand("report", "Plot captures on one HTML page for a browser");
    parser->add_option("CAPTURE", options->run.captures, "pcap or pcapng files")
        ->type_name("FILE")
        ->required();
    parser
        ->add_option("-o,--output", options->output,
                     "HTML file to write (default: run.html for run.pcap)")
        ->type_name("FILE");
    add_overwrite(*parser, options->overwrite);
    add_run(*parser, options->run);
    return {parser, [options] { return report(*options); }};
}

void add_scenario(CLI::App& parser, zel::simulation::scenario_kind& kind) {
    constexpr auto& names = zel::simulation::scenario_names;
    const auto choose = [&kind](const std::string& name) {
        kind = static_cast<zel::simulation::scenario_kind>(std::ranges::find(names, name) -
                                                           names.begin());
    };
    parser
        .add_option_function<std::string>("--scenario", choose,
                                          "What the targets do: drive ahead of the hunter, come "
                                          "towards it, or cross its path")
        ->check(CLI::IsMember(std::vector<std::string>(names.begin(), names.end())))
        ->default_str(names[0]);
}

command add_simulate(CLI::App& app) {
    const auto options = std::make_shared<simulate_options>();
    auto& traffic = options->traffic;
    CLI::App* const parser = app.add_subcommand("simulate", "Write the capture of a simulated run");
    parser->add_option("CAPTURE", options->output, "pcap file to write")
        ->type_name("FILE")
        ->required();
    add_scenario(*parser, traffic.scenario);
    add_overwrite(*parser, options->overwrite);
    parser->add_option("--duration", traffic.duration_s, "Duration in seconds")
        ->check(CLI::Range(1, 86400))
        ->capture_default_str();
    parser->add_option("--rate", traffic.rate_hz, "NCOM packets per second of each unit")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    parser->add_option("--targets", traffic.targets, "Number of targets")
        ->check(CLI::Range(1, 4))
        ->capture_default_str();
    parser
        ->add_option("--wrapped-every", traffic.wrapped_every,
                     "Wrap every n-th NCOM packet of the targets in RCOM; 0 wraps none")
        ->capture_default_str();
    parser->add_option("--seed", traffic.seed, "Random seed; the same seed gives the same capture")
        ->check(CLI::Range(std::uint64_t{0}, std::uint64_t{UINT32_MAX}))
        ->capture_default_str();
    return {parser, [options] {
                simulate(*options);
                return exit_success;
            }};
}

command add_fields(CLI::App& app) {
    struct form {
        std::string view = "measured";
        bool markdown = false;
        bool c = false;
    };
    const auto as = std::make_shared<form>();
    CLI::App* const parser = app.add_subcommand("fields", "List the columns of the tables");
    CLI::Option* const view =
        parser
            ->add_option("--view", as->view,
                         "measured: the columns of that view; record: the fields of the records")
            ->check(CLI::IsMember({"measured", "record"}))
            ->capture_default_str();
    CLI::Option* const markdown =
        parser->add_flag("--markdown", as->markdown, "Print both views as a Markdown page")
            ->excludes(view);
    parser->add_flag("--c", as->c, "Print the records as a C header")
        ->excludes(view)
        ->excludes(markdown);
    return {parser, [as] {
                if (as->markdown)
                    print_fields_as_markdown();
                else if (as->c)
                    print_fields_as_c();
                else if (as->view == "record")
                    print_record_fields();
                else
                    print_measured_columns();
                return exit_success;
            }};
}

command add_info(CLI::App& app) {
    const auto plugin = std::make_shared<std::filesystem::path>();
    CLI::App* const parser = app.add_subcommand("info", "Show a plug-in's metadata and formatters");
    parser->add_option("PLUGIN", *plugin, plugin_help)->type_name("FILE");
    return {parser, [plugin] {
                print_info(plugin->empty() ? default_plugin_file() : *plugin);
                return exit_success;
            }};
}

/// The first argument that is not an option; empty if there is none.
std::string first_name(const std::vector<std::string>& arguments) {
    const auto found = std::ranges::find_if(
        arguments, [](const std::string& argument) { return !argument.starts_with('-'); });
    return found == arguments.end() ? "" : *found;
}

/// The message about wrong arguments, with the command that helps.
std::string message_for(const CLI::ParseError& error, const CLI::App& app,
                        const std::vector<std::string>& arguments) {
    const auto commands = app.get_subcommands();
    const std::string name = first_name(arguments);
    std::error_code ignored;
    if (commands.empty() &&
        std::filesystem::is_regular_file(std::u8string(name.begin(), name.end()), ignored))
        return fmt::format("no command given; to view a capture: rtrange report {}", name);
    std::string message = error.what();
    if (message.find("see 'rtrange") != std::string::npos)
        return message;
    return fmt::format("{}; see 'rtrange {}--help'", message,
                       commands.empty() ? "" : commands.front()->get_name() + " ");
}

} // namespace

int run_command_line(const std::vector<std::string>& arguments) {
    CLI::App app("Decodes network captures of an RT-Range hunter/target system.", "rtrange");
    app.set_version_flag("--version", ZEL_VERSION);
    app.allow_windows_style_options(false); // a slash begins a path
    const command commands[] = {add_decode(app),   add_report(app), add_watch(app),
                                add_simulate(app), add_fields(app), add_info(app)};
    try {
        // The parser takes them in this order.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error);
        throw usage_failure(message_for(error, app, arguments));
    }
    for (const command& each : commands)
        if (*each.parser)
            return each.run();
    throw usage_failure("no command given; see 'rtrange --help'");
}

} // namespace rtrange
