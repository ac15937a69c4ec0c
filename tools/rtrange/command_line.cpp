#include "tools/rtrange/command_line.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <system_error>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tools/rtrange/captures/compressed_capture.hpp"
#include "tools/rtrange/command_options.hpp"
#include "tools/rtrange/completion.hpp"
#include "tools/rtrange/decode_command.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/fields_command.hpp"
#include "tools/rtrange/help_text.hpp"
#include "tools/rtrange/info_command.hpp"
#include "tools/rtrange/names.hpp"
#include "tools/rtrange/plugin_file.hpp"
#include "tools/rtrange/report_command.hpp"
#include "tools/rtrange/simulate_command.hpp"
#include "tools/rtrange/watch_command.hpp"
#include "version.hpp"

namespace rtrange {
namespace {

/// A command of the program: its options, and what to call when they have been parsed.
struct command {
    CLI::App* parser;
    std::function<int()> run; ///< returns the exit code
};

command add_decode(CLI::App& app) {
    const auto options = std::make_shared<decode_options>();
    CLI::App* const parser = app.add_subcommand(
        "decode", "Decode captures, or live traffic, into CSV, HDF5 or MATLAB tables");
    add_source(*parser, *options);
    add_tables(*parser, *options,
               "Folder of the CSV files, or file (default: run, run.h5 or run.mat for run.pcap)",
               "Also write the tables of filtered samples (always in the view record)");
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
        ->type_name("ADDRESS")
        ->default_str(text_of(options->listen));
    parser
        ->add_option("--speed", options->speed,
                     "Playback speed of captures: 1 as recorded, 0 as fast as possible")
        ->check(fault_of_speed, "")
        ->type_name("FACTOR")
        ->capture_default_str()
        ->excludes("--interface");
    add_tables(*parser, options->decode, "Also write tables: folder of the CSV files, or file",
               "Also write the tables of filtered samples");
    for (const char* const name : {"--as", "--samples"})
        parser->get_option(name)->needs("--output");
    add_content(
        *parser, options->decode.run.selection,
        "Write only these fields to the tables; the page shows them in addition to its own");
    add_decoder(*parser, options->decode.run,
                "Start a new decoder after a gap of this many seconds; 0: never (default: 5)");
    return {parser, [options] { return watch(*options); }};
}

command add_report(CLI::App& app) {
    const auto options = std::make_shared<report_command_options>();
    CLI::App* const parser =
        app.add_subcommand("report", "Plot captures on one HTML page for a browser");
    add_captures(*parser, options->run)->required();
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

/// A message that says what is wrong with the name of a command; empty if there is such a command.
std::string fault_of_command(const std::string& given, const CLI::App& app) {
    const auto commands = app.get_subcommands({});
    std::vector<std::string_view> names;
    names.reserve(commands.size());
    for (const CLI::App* const command : commands)
        names.push_back(command->get_name());
    return fault_of_name("command", given, names);
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
    if (const std::string fault = fault_of_command(name, app);
        commands.empty() && !name.empty() && !fault.empty())
        message = fault;
    if (message.find("see 'rtrange") != std::string::npos)
        return message;
    return fmt::format("{}; see 'rtrange {}--help'", message,
                       commands.empty() ? "" : commands.front()->get_name() + " ");
}

/// The option that names a result after a compressed capture, as if it had been read unpacked.
std::string named_result(const std::string& command, const compressed_capture& capture) {
    const std::string& name = capture.unpacked_name();
    if (command == "watch" || name.empty())
        return {};
    return " --output " + shell_argument(name + (command == "report" ? ".html" : ""));
}

/// Runs a command. A failure over a compressed capture names the command line that reads it.
int run(const command& command) {
    try {
        return command.run();
    } catch (const compressed_capture& error) {
        const std::string name = command.parser->get_name();
        throw failure(fmt::format("{}; read it with: {} | rtrange {} -{}", error.what(),
                                  error.unpacking(), name, named_result(name, error)));
    }
}

} // namespace

int run_command_line(const std::vector<std::string>& arguments) {
    CLI::App app("Decodes network captures of an RT-Range hunter/target system.", "rtrange");
    app.set_version_flag("--version", ZEL_VERSION);
    app.allow_windows_style_options(false); // a slash begins a path
    format_help(app);
    const command commands[] = {add_decode(app),   add_report(app), add_watch(app),
                                add_simulate(app), add_fields(app), add_info(app)};
    add_help_footers(app);
    if (!arguments.empty() && arguments.front() == completion_command) {
        print_completions(app, {arguments.begin() + 1, arguments.end()});
        return exit_success;
    }
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
            return run(each);
    throw usage_failure("no command given; see 'rtrange --help'");
}

} // namespace rtrange
