#include "tools/rtrange/report_command.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/outputs/with_key_figures.hpp"
#include "tools/rtrange/report/report_output.hpp"
#include "tools/rtrange/results/default_name.hpp"
#include "tools/rtrange/results/no_rows.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace rtrange {
namespace {

/// Throws usage_failure when a field cannot be plotted.
void check_fields(const std::vector<std::string>& fields, const table_columns& tables) {
    for (const std::vector<column>& columns : tables)
        for (const column& entry : columns)
            if ((entry.type == cell_type::ipv4 || entry.type == cell_type::address) &&
                std::ranges::find(fields, entry.name) != fields.end())
                throw usage_failure(
                    fmt::format("a report plots numbers; {} is an address", entry.name));
}

/// Throws usage_failure when nothing but RCOM is selected, of which only named fields are plotted.
void check_units(const selection_options& options) {
    const auto& units = options.units;
    if (options.fields.empty() && !units.empty() &&
        std::ranges::all_of(units, [](const std::string& unit) { return unit == "rcom"; }))
        throw usage_failure("a report shows RCOM rows only with --fields");
}

/// Throws failure when no row of the run is shown. RCOM rows are the only ones that a report omits.
void end_without_shown_rows(const frame_decoder& decoder, const report_output& output,
                            const std::vector<std::string>& faults) {
    if (!output.tables().empty())
        return;
    print_summary(decoder, {});
    end_with_faults(faults);
    throw failure("there are only RCOM rows, which a report shows only with --fields");
}

} // namespace

int report(const report_command_options& options) {
    const auto file =
        options.output.empty() ? default_name(options.run, "", ".html") : options.output;
    auto captures = open_captures(options.run.captures);
    check_output(file, options.run.captures);
    check_units(options.run.selection);
    const std::vector<std::string>& fields = options.run.selection.fields;
    run_options run = options.run;
    run.selection.also_fields = {"latitude", "longitude", "source_ip"};
    for (const char* const name : key_figure_columns)
        run.selection.also_fields.emplace_back(name);
    frame_decoder decoder(run);
    check_fields(fields, decoder.columns());
    catch_interruptions();
    report_output output({file, options.overwrite, run.captures, run.view, fields},
                         decoder.columns(), decoder.outcomes());
    with_key_figures rows(output, decoder.columns());
    const auto faults = decode_captures(captures, decoder, rows);
    end_without_rows(decoder, options.run, faults);
    end_without_shown_rows(decoder, output, faults);
    for (const std::string& fault : faults)
        output.add_note(fault + '.');
    // Those of the view "measured" are about rows that the page counts itself.
    if (run.view == "record")
        for (const std::string& note : decoder.notes())
            output.add_note(note + '.');
    output.close();
    print_summary(decoder, output.tables(), rows.figures(decoder.outcomes()));
    print("\nTo view the report, open {} in a browser\n", std::filesystem::absolute(file).string());
    return end_with_faults(faults);
}

} // namespace rtrange
