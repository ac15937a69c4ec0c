#include "tools/rtrange/report_command.hpp"

#include <cstddef>

#include <fmt/format.h>

#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/report/report_output.hpp"

namespace rtrange {
namespace {

void check_fields(const selection& selection) {
    using zel::toolbox::rt_range::field_type;
    for (std::size_t table = 0; table < record_table_count; ++table)
        for (const auto& field : selection.fields(table))
            if (field.type == field_type::ipv4)
                throw usage_failure(
                    fmt::format("a report draws numbers, and {} is an address", field.name));
}

} // namespace

int report(const report_command_options& options) {
    auto captures = open_captures(options.run.captures);
    check_output(options.output, options.run.captures);
    const bool named_fields = !options.run.selection.fields.empty();
    decoding run(options.run);
    if (named_fields)
        check_fields(run.selection());
    report_output output({options.output, options.run.captures, named_fields}, run.selection(),
                         run.fates());
    catch_interruptions();
    const auto faults = decode_captures(captures, run, output);
    output.close();
    print_summary(run.fates(), output.tables());
    fmt::print("\nTo see the run, open {} in a browser\n",
               std::filesystem::absolute(options.output).string());
    return end_with_faults(faults);
}

} // namespace rtrange
