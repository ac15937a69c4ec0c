#include "tools/rtrange/report_command.hpp"

#include <algorithm>
#include <cstddef>
#include <string>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/report/report_output.hpp"
#include "tools/rtrange/results/default_name.hpp"
#include "tools/rtrange/results/no_rows.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace rtrange {
namespace {

/// Throws usage_failure when a field cannot be plotted.
void check_fields(const selection& selected) {
    using zel::toolbox::rt_range::field_type;
    for (std::size_t table = 0; table < record_table_count; ++table)
        for (const auto& entry : selected.fields(table))
            if (entry.type == field_type::ipv4)
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

} // namespace

int report(const report_command_options& options) {
    const auto file =
        options.output.empty() ? default_name(options.run, "", ".html") : options.output;
    auto captures = open_captures(options.run.captures);
    check_output(file, options.run.captures);
    check_units(options.run.selection);
    const bool named_fields = !options.run.selection.fields.empty();
    frame_decoder decoder(options.run);
    if (named_fields)
        check_fields(decoder.selected());
    catch_interruptions();
    report_output output({file, options.overwrite, options.run.captures, named_fields},
                         decoder.selected(), decoder.outcomes());
    const auto faults = decode_captures(captures, decoder, output);
    end_without_rows(output, decoder, options.run, faults);
    output.close();
    print_summary(decoder.outcomes(), output.tables());
    print("\nTo view the report, open {} in a browser\n", std::filesystem::absolute(file).string());
    return end_with_faults(faults);
}

} // namespace rtrange
