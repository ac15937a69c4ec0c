#include "tools/rtrange/report_command.hpp"

#include <cstddef>

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
void check_fields(const selection& selected) {
    using zel::toolbox::rt_range::field_type;
    for (std::size_t table = 0; table < record_table_count; ++table)
        for (const auto& entry : selected.fields(table))
            if (entry.type == field_type::ipv4)
                throw usage_failure(
                    fmt::format("a report plots numbers; {} is an address", entry.name));
}

} // namespace

int report(const report_command_options& options) {
    auto captures = open_captures(options.run.captures);
    check_output(options.output, options.run.captures);
    const bool named_fields = !options.run.selection.fields.empty();
    frame_decoder decoder(options.run);
    if (named_fields)
        check_fields(decoder.selected());
    report_output output({options.output, options.run.captures, named_fields}, decoder.selected(),
                         decoder.outcomes());
    catch_interruptions();
    const auto faults = decode_captures(captures, decoder, output);
    for (const std::string& fault : faults)
        output.add_note(fault + '.');
    output.close();
    print_summary(decoder.outcomes(), output.tables());
    print("\nTo view the report, open {} in a browser\n",
          std::filesystem::absolute(options.output).string());
    return end_with_faults(faults);
}

} // namespace rtrange
