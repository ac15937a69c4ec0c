#include "tools/rtrange/fields_command.hpp"

#include <span>

#include "tools/rtrange/standard_output.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

struct record_layout {
    const char* title;
    const char* content;
    std::span<const field> fields;
};

const record_layout layouts[] = {
    {"NCOM unit record",
     "State of one unit, 869 bytes. In a package it follows the unit's tag: 0x00100000 for the "
     "hunter, 0x00300000, 0x00400000, 0x00500000, 0x00600000 for targets 1 to 4.",
     ncom_fields()},
    {"RCOM unit record",
     "State of the RT-Range unit, 1187 bytes. In a package it follows the tag 0x00200000. Status "
     "channels without a prefix belong to the extended range packet.",
     rcom_fields()},
};

} // namespace

void print_fields() {
    for (const record_layout& record : layouts) {
        print("{}\n{}\n\n", record.title, record.content);
        print("{:>6}  {:<4}  {:<38}  {:<6}  {}\n", "offset", "type", "field", "unit", "meaning");
        for (const field& entry : record.fields)
            print("{:>6}  {:<4}  {:<38}  {:<6}  {}\n", entry.offset, name_of(entry.type),
                  entry.name, entry.unit, entry.meaning);
        print("\n");
    }
}

void print_fields_as_markdown() {
    print("# The decoded records\n\n"
          "Written by `rtrange fields --markdown`. All numbers are little-endian and follow "
          "one another without gaps; offsets count from the start of the record, which stands "
          "4 bytes into the data of its package, behind the tag. An ipv4 field holds the four "
          "bytes of an address as they stand on the wire.\n");
    for (const record_layout& record : layouts) {
        print("\n## {}\n\n{}\n\n", record.title, record.content);
        print("| Offset | Type | Field | Unit | Meaning |\n|---:|---|---|---|---|\n");
        for (const field& entry : record.fields)
            print("| {} | {} | `{}` | {} | {} |\n", entry.offset, name_of(entry.type), entry.name,
                  entry.unit, entry.meaning);
    }
}

} // namespace rtrange
