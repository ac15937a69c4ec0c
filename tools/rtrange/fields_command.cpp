#include "tools/rtrange/fields_command.hpp"

#include <span>
#include <string>
#include <vector>

#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/records_header.hpp"
#include "tools/rtrange/reference_texts.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/tables/measured_columns.hpp"
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

/// One line of the reference of the view "measured".
struct listed_column {
    std::string tables; ///< names of tables or groups of them
    column shown;
    std::string origin;
};

struct column_list {
    const char* title;
    const char* content;
    std::vector<listed_column> columns;
};

std::vector<listed_column> listed(std::span<const column> columns, const char* tables,
                                  const char* origin) {
    std::vector<listed_column> result;
    result.reserve(columns.size());
    for (const column& entry : columns)
        result.push_back({tables, entry, origin});
    return result;
}

std::vector<listed_column> listed(const std::vector<measured_column>& columns, const char* tables) {
    std::vector<listed_column> result;
    result.reserve(columns.size());
    for (const measured_column& entry : columns)
        result.push_back(
            {entry.of_hunter ? tables : "targets", entry.shown, text_of(entry.origin)});
    return result;
}

std::vector<listed_column> listed_samples() {
    std::vector<listed_column> result;
    for (const field& entry : sample_fields())
        result.push_back({"samples",
                          {entry.name, cell_type::f64, entry.unit, entry.meaning},
                          text_of(entry.origin)});
    return result;
}

std::vector<column_list> measured_lists() {
    return {
        {"First columns", "Every table but \"refused\" begins with them.",
         listed(measured_leading_columns(), "all", "the capture")},
        {"Tables of units",
         "Tables hunter, target1 to target4 and unidentified. Columns marked \"targets\" "
         "are in those of the targets only.",
         listed(measured_unit_columns(), "units")},
        {"Table of RCOM",
         "Table rcom. Status channels without a prefix belong to the extended range packet.",
         listed(measured_rcom_columns(), "rcom")},
        {"Tables of samples",
         "Tables hunter_samples, target1_samples to target4_samples, with the option --samples. "
         "Each "
         "row is one of the thirty low-pass-filtered samples of a batch; see \"Samples\" of the "
         "records in docs/records.md.",
         listed_samples()},
        {"Table of refused frames", "Table refused.",
         listed(refused_columns(), "refused", "the capture")},
    };
}

void print_value_tables() {
    for (const value_table& table : value_tables) {
        print("{}\nValues of {}. Others are reserved.\n\n", table.title, table.fields);
        for (const auto& [value, name] : table.names)
            print("{:>6}  {}\n", value, name);
        print("\n");
    }
}

void print_measured_columns_as_markdown() {
    for (const auto& [title, content, columns] : measured_lists()) {
        print("## {}\n\n{}\n\n", title, content);
        print("| Column | Unit | Tables | Brought by | Meaning |\n|---|---|---|---|---|\n");
        for (const auto& [tables, shown, origin] : columns)
            print("| `{}` | {} | {} | {} | {} |\n", shown.name, shown.unit, tables, origin,
                  shown.meaning);
        print("\n");
    }
}

void print_record_fields_as_markdown() {
    for (const record_layout& record : layouts) {
        print("\n## {}\n\n{}\n\n", record.title, record.content);
        print("| Offset | Type | Field | Unit | Brought by | Meaning |\n"
              "|---:|---|---|---|---|---|\n");
        for (const field& entry : record.fields)
            print("| {} | {} | `{}` | {} | {} | {} |\n", entry.offset, name_of(entry.type),
                  entry.name, entry.unit, text_of(entry.origin), entry.meaning);
    }
}

} // namespace

void print_measured_columns() {
    print("Columns of the view measured. The view record: rtrange fields --view record\n\n");
    for (const auto& [title, content, columns] : measured_lists()) {
        print("{}\n{}\n\n", title, content);
        print("{:<38}  {:<6}  {:<7}  {:<34}  {}\n", "column", "unit", "tables", "brought by",
              "meaning");
        for (const auto& [tables, shown, origin] : columns)
            print("{:<38}  {:<6}  {:<7}  {:<34}  {}\n", shown.name, shown.unit, tables, origin,
                  shown.meaning);
        print("\n");
    }
    print_value_tables();
}

void print_record_fields() {
    for (const record_layout& record : layouts) {
        print("{}\n{}\n\n", record.title, record.content);
        print("{:>6}  {:<4}  {:<38}  {:<6}  {:<47}  {}\n", "offset", "type", "field", "unit",
              "brought by", "meaning");
        for (const field& entry : record.fields)
            print("{:>6}  {:<4}  {:<38}  {:<6}  {:<47}  {}\n", entry.offset, name_of(entry.type),
                  entry.name, entry.unit, text_of(entry.origin), entry.meaning);
        print("\n");
    }
    print_value_tables();
}

void print_fields_as_markdown() {
    print("{}", page_beginning);
    print_measured_columns_as_markdown();
    print("{}", records_beginning);
    print_record_fields_as_markdown();
    print("\n# Values\n");
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
