// rtrange: decodes captures of an RT-Range system with the formatter plug-in.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tools/rtrange/decode_command.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/fields_command.hpp"
#include "tools/rtrange/info_command.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/plugin_file.hpp"
#include "tools/rtrange/report_command.hpp"
#include "tools/rtrange/simulate_command.hpp"
#include "version.hpp"

/// Arguments are UTF-8, which a path does not expect of a plain string on every system.
template <>
bool CLI::detail::lexical_cast(const std::string& argument, std::filesystem::path& file) {
    file = std::u8string(argument.begin(), argument.end());
    return true;
}

namespace {

using namespace rtrange;

void add_selection(CLI::App& command, selection_options& options) {
    command.add_option("--fields", options.fields, "Only these fields, for example heading,roll")
        ->delimiter(',')
        ->allow_extra_args(false) // a capture may come next
        ->check(fault_of_field, "NAME");
    command.add_option("--units", options.units, "Only these: hunter, target1 to target4, rcom")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(fault_of_unit, "NAME");
    command.add_option("--from", options.from, "Only what is not before this time")
        ->check(fault_of_time, "TIME");
    command
        .add_option("--to", options.to,
                    "Only what is before this time: seconds since the start, or UTC")
        ->check(fault_of_time, "TIME");
}

void add_run(CLI::App& command, run_options& options) {
    add_selection(command, options.selection);
    command.add_option("--format", options.format, "Raw packages to wrap the frames in")
        ->check(CLI::IsMember({"zel.rtrange", "zel.eth.rtrange"}))
        ->capture_default_str();
    command.add_option("--plugin", options.plugin,
                       "Plug-in file; the one of this program by default");
}

CLI::App* add_decode(CLI::App& app, decode_options& options) {
    CLI::App* const command =
        app.add_subcommand("decode", "Decode captures into tables, CSV or HDF5");
    CLI::Option* const captures =
        command->add_option("CAPTURE", options.run.captures, "pcap or pcapng files");
    CLI::Option* const live =
        command
            ->add_option("-i,--interface", options.interface_name,
                         "Decode live from this network interface until Ctrl-C")
            ->check([](const std::string& name) { return name.empty() ? "name one" : ""; }, "NAME")
            ->excludes(captures);
    command->add_option("--as", options.kind, "Output: a folder of CSV tables, or one HDF5 file")
        ->check(CLI::IsMember({"csv", "hdf5"}))
        ->capture_default_str();
    command->add_option("-o,--output", options.output,
                        "Folder of the tables, or HDF5 file; decoded or decoded.h5 by default");
    add_run(*command, options.run);
    command->callback([captures, live] {
        if (captures->empty() && live->empty())
            throw CLI::RequiredError("CAPTURE or --interface");
    });
    return command;
}

CLI::App* add_report(CLI::App& app, report_command_options& options) {
    CLI::App* const command =
        app.add_subcommand("report", "Draw captures as a page to look at in a browser");
    command->add_option("CAPTURE", options.run.captures, "pcap or pcapng files")->required();
    command->add_option("-o,--output", options.output, "HTML file to write")->capture_default_str();
    add_run(*command, options.run);
    return command;
}

CLI::App* add_simulate(CLI::App& app, simulate_options& options) {
    auto& traffic = options.traffic;
    CLI::App* const command =
        app.add_subcommand("simulate", "Write the capture of a simulated car-following run");
    command->add_option("CAPTURE", options.output, "pcap file to write")->required();
    command->add_option("--duration", traffic.duration_s, "Seconds")
        ->check(CLI::Range(1, 86400))
        ->capture_default_str();
    command->add_option("--rate", traffic.rate_hz, "Packets per unit and second")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    command->add_option("--targets", traffic.targets, "Number of targets")
        ->check(CLI::Range(1, 4))
        ->capture_default_str();
    command
        ->add_option("--wrapped-every", traffic.wrapped_every,
                     "Wrap every n-th target NCOM packet in RCOM; 0 wraps none")
        ->capture_default_str();
    command->add_option("--seed", traffic.seed, "Same seed, same bytes")
        ->check(CLI::Range(std::uint64_t{0}, std::uint64_t{UINT32_MAX}))
        ->capture_default_str();
    return command;
}

int run(std::vector<std::string> arguments) {
    CLI::App app("Decodes network captures of an RT-Range hunter/target system.", "rtrange");
    app.set_version_flag("--version", ZEL_VERSION);
    app.allow_windows_style_options(false); // a slash begins a path

    decode_options decoding;
    const CLI::App* const decode_command = add_decode(app, decoding);

    report_command_options reporting;
    const CLI::App* const report_command = add_report(app, reporting);

    std::filesystem::path plugin_to_show;
    CLI::App* const info_command =
        app.add_subcommand("info", "Show what a plug-in says about itself");
    info_command->add_option("PLUGIN", plugin_to_show,
                             "Plug-in file; the one of this program by default");

    bool as_markdown = false;
    bool as_c = false;
    CLI::App* const fields_command =
        app.add_subcommand("fields", "Show the fields of the decoded records");
    CLI::Option* const markdown = fields_command->add_flag("--markdown", as_markdown,
                                                           "Write them as a page of documentation");
    fields_command->add_flag("--c", as_c, "Write them as a C header")->excludes(markdown);

    simulate_options simulation;
    const CLI::App* const simulate_command = add_simulate(app, simulation);

    try {
        std::ranges::reverse(arguments); // as the parser wants them
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error);
        fmt::print(stderr, "rtrange: {}; 'rtrange --help' shows what is possible\n", error.what());
        return exit_usage;
    }

    if (app.get_subcommands().empty())
        throw usage_failure("name a command; 'rtrange --help' shows what is possible");
    for (run_options* const options : {&decoding.run, &reporting.run})
        if (options->plugin.empty())
            options->plugin = default_plugin_file();
    if (*decode_command)
        return decode(decoding);
    if (*report_command)
        return report(reporting);
    if (*info_command)
        print_info(plugin_to_show.empty() ? default_plugin_file() : plugin_to_show);
    if (*fields_command)
        as_c ? print_fields_as_c() : as_markdown ? print_fields_as_markdown() : print_fields();
    if (*simulate_command)
        simulate(simulation);
    return exit_success;
}

/// Output that got lost, on a full disk or in a closed pipe, is a failure.
void check_standard_output() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw failure("cannot write to standard output");
}

} // namespace

int main(int argc, char** argv) {
    try {
        set_up_process();
        const int exit_code = run(program_arguments(argc, argv));
        check_standard_output();
        return exit_code;
    } catch (const usage_failure& error) {
        std::fprintf(stderr, "rtrange: %s\n", error.what());
        return exit_usage;
    } catch (const std::filesystem::filesystem_error& error) {
        std::fprintf(stderr, "rtrange: %s\n", error.what());
        return exit_failure;
    } catch (const std::system_error& error) {
        // Nothing else throws it than a print.
        std::fprintf(stderr, "rtrange: cannot write to standard output: %s\n",
                     error.code().message().c_str());
        return exit_failure;
    } catch (const std::exception& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "rtrange: %s\n", error.what()); // which does not throw once more
        return exit_failure;
    }
}
