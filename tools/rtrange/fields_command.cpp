#include "tools/rtrange/fields_command.hpp"

#include <fmt/format.h>

#include "zel_rt_range_formatter/fields/ncom_fields.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

void print_fields() {
    fmt::print("NCOM unit record: hunter.csv, target1.csv ... target4.csv and their samples\n\n");
    fmt::print("{:<38} {:>6}  {:<4}  {:<6}  {}\n", "field", "offset", "type", "unit", "meaning");
    for (const field& field : ncom_fields())
        fmt::print("{:<38} {:>6}  {:<4}  {:<6}  {}\n", field.name, field.offset,
                   name_of(field.type), field.unit, field.meaning);
}

} // namespace rtrange
