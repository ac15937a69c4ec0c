#include "tools/rtrange/fields_command.hpp"

#include <span>

#include "tools/rtrange/records_header.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"
#include "zel_rt_range_formatter/records/value_names.hpp"

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

struct value_table {
    const char* title;
    const char* fields;
    std::span<const value_name> names;
};

const value_table value_tables[] = {
    {"Navigation status", "navigation_status", navigation_status_names()},
    {"Modes", "position_mode, velocity_mode, orientation_mode", mode_names()},
};

constexpr const char* introduction = R"(# The decoded records

Written by `rtrange fields --markdown`. `include/zel/rt_range_records.h` declares the same records for C and C++.

## Layout

The data of a `zel.rtrange` package are a tag of 4 bytes, then one of the two records. All numbers are little-endian and follow one another without gaps. Offsets count from the start of the record; within the data of the package, they are 4 bytes higher. Only the numbers in the names `reserved_89`, `reserved_97`, `reserved_313` and `reserved_321` of the RCOM record count from the start of the data.

| Type | Content |
|---|---|
| u8, u16, u32, u64 | unsigned integer of 8, 16, 32 or 64 bits |
| s16, s32, s64 | signed integer of 16, 32 or 64 bits, two's complement |
| f64 | IEEE 754 number of 64 bits |
| ipv4 | the four bytes of an IPv4 address, in the order of the wire |

## Records are states

A record holds the latest value of everything received since the last reset, not the content of one packet. Fields whose packet or status channel has not been received yet are 0; a received value may be 0, too.

An extended range packet about a target produces an NCOM record of that target even before the target's first NCOM packet: its `packet_count` is then 0, and so are all fields that only NCOM packets set.

An NCOM record that directly follows an RCOM record in the result of one `transform` call was produced by that RCOM datagram: by a wrapped NCOM packet if its `packet_count` is one higher than in the last state of that target, and by an extended range packet if it is the same. RCOM also changes fields of the hunter's record, but does not produce it: the changes appear in the next record that an NCOM packet of the hunter produces.

## Samples

Every thirtieth NCOM packet since the last reset, direct or wrapped and counted over all units, completes a batch. It produces thirty additional NCOM records, before its other records. They differ only in the `sample_*` fields: the first one has the filtered values of the first packet of the batch, the second one those of the second packet, and so on, whichever units sent them. Everything else is the same in all thirty and belongs to the thirtieth packet: the header of the package with the reference timestamp, the tag, and the record of the unit that sent this packet. Only `utc_time_us` and `gps_time_valid` are those after the unit's previous packet. The records do not contain the times of the individual samples.

The filter starts from zero with each batch, so the first samples are close to 0. The record of the unit keeps the last sample until the unit completes another batch.

## Signs, ranges and values

- **Axes**: x points forward, y to the left and z up. Fields whose meaning says otherwise, such as "to the right" or "sign as received", keep the axes of the sender.
- **Heading**: 0 is north, 90 is east. Its range is not limited: NCOM sends a signed angle, RCOM status channel 10 an unsigned one.
- **Pitch and roll**: pitch is positive with the nose down, roll with the right side down. Their ranges are not limited.
- **Differences of angles**: if the angles are between -360 and 360, `relative_heading` and `relative_pitch` are between -180 and 180, and `relative_roll` is between -360 and 360.
- **Position**: the geodetic datum, the reference of the altitude, and the signs of latitude and longitude are those of the sender. Its manual states them.
- **Ages**: the fields `*_age` of type u8 are bytes as received. Their unit is not known. The decoder regards a `velocity_accuracy_age` of 150 or more as outdated; it does not evaluate the others.
- **Modes and states**: `navigation_status`, `orientation_mode` and `velocity_mode` are stored as received; their values are listed at the end of this page. The fields that are described only by their bytes are stored as received, too; their meaning is not known. A `navigation_status` of 11 does not occur, because such packets are dropped. `utc_offset_valid` and `gps_time_valid` are 0 or 1.
)";

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
    for (const value_table& table : value_tables) {
        print("{}\nValues of {}. Others are reserved.\n\n", table.title, table.fields);
        for (const auto& [value, name] : table.names)
            print("{:>6}  {}\n", value, name);
        print("\n");
    }
}

void print_fields_as_markdown() {
    print("{}", introduction);
    for (const record_layout& record : layouts) {
        print("\n## {}\n\n{}\n\n", record.title, record.content);
        print("| Offset | Type | Field | Unit | Meaning |\n|---:|---|---|---|---|\n");
        for (const field& entry : record.fields)
            print("| {} | {} | `{}` | {} | {} |\n", entry.offset, name_of(entry.type), entry.name,
                  entry.unit, entry.meaning);
    }
    for (const value_table& table : value_tables) {
        print("\n## {}\n\nValues of {}. Others are reserved.\n\n", table.title, table.fields);
        print("| Value | Name |\n|---:|---|\n");
        for (const auto& [value, name] : table.names)
            print("| {} | {} |\n", value, name);
    }
}

void print_fields_as_c() {
    print("{}", records_header());
}

} // namespace rtrange
