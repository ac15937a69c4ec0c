#include "tools/rtrange/report_command.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/capture_decoding.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/report/report_output.hpp"
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

} // namespace

int report(const report_command_options& options) {
    auto captures = open_captures(options.run.captures);
    check_output(options.output, options.run.captures);
    const std::vector<std::string>& fields = options.run.selection.fields;
    run_options run = options.run;
    run.selection.also_fields = {"latitude", "longitude", "source_ip"};
    frame_decoder decoder(run);
    check_fields(fields, decoder.columns());
    report_output output({options.output, run.captures, fields}, decoder.columns(),
                         decoder.outcomes());
    catch_interruptions();
    const auto faults = decode_captures(captures, decoder, output);
    output.close();
    print_summary(decoder, output.tables());
    print("\nTo view the report, open {} in a browser\n",
          std::filesystem::absolute(options.output).string());
    return end_with_faults(faults);
}

} // namespace rtrange
