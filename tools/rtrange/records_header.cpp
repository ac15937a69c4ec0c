#include "tools/rtrange/records_header.hpp"

#include <iterator>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"
#include "zel_rt_range_formatter/records/units.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

constexpr std::string_view beginning =
    R"(/* The records in packages of format type ZEL_FORMAT_TYPE_RTRANGE. */
/* Written by `rtrange fields --c`. */
#ifndef ZEL_RT_RANGE_RECORDS_H
#define ZEL_RT_RANGE_RECORDS_H

#include "zel/api.h"
#include "zel/format_type.h"

/* clang-format off */

/* First 4 bytes of the data of a package; the record follows them directly. For the hunter and the
 * targets, it is an NCOM record. */
)";

constexpr std::string_view before_records = R"(
/* docs/records.md describes the fields. The numbers are little-endian. The records are packed, so
 * their members may be misaligned: access them by name, do not take their addresses. Copy a record
 * out of its package with memcpy. */
#pragma pack(push, 1)
)";

std::string_view c_type(field_type type) {
    switch (type) {
    case field_type::u8:
    case field_type::ipv4:
        return "uint8_t";
    case field_type::u16:
        return "uint16_t";
    case field_type::u32:
        return "uint32_t";
    case field_type::u64:
        return "uint64_t";
    case field_type::s16:
        return "int16_t";
    case field_type::s32:
        return "int32_t";
    case field_type::s64:
        return "int64_t";
    case field_type::f64:
        return "double";
    }
    return "";
}

/// The unit as a comment in ASCII; empty for a number without unit.
std::string comment(const field& field) {
    if (field.type == field_type::ipv4)
        return " /* in the order of the wire */";
    const std::string_view unit = field.unit;
    if (unit.empty())
        return "";
    return fmt::format(" /* {} */", unit == "m/s²" ? "m/s^2" : unit);
}

void add_tag(std::string& text, std::string_view name, std::uint32_t tag) {
    fmt::format_to(std::back_inserter(text), "#define ZEL_RT_RANGE_TAG_{} UINT32_C(0x{:08X})\n",
                   name, tag);
}

void add_record(std::string& text, std::string_view type, std::span<const field> fields) {
    const auto end = std::back_inserter(text);
    fmt::format_to(end, "\ntypedef struct {} {{\n", type);
    for (const field& field : fields)
        fmt::format_to(end, "    {} {}{};{}\n", c_type(field.type), field.name,
                       field.type == field_type::ipv4 ? "[4]" : "", comment(field));
    fmt::format_to(end, "}} {};\n", type);
}

void add_checks(std::string& text, std::string_view type, std::span<const field> fields) {
    const auto end = std::back_inserter(text);
    text += '\n';
    for (const field& field : fields)
        fmt::format_to(end, "ZEL_CHECK_OFFSET({}, {}, {});\n", type, field.name, field.offset);
    fmt::format_to(end, "ZEL_CHECK_RECORD({}, {}, 1);\n", type,
                   fields.back().offset + size_of(fields.back().type));
}

} // namespace

std::string records_header() {
    constexpr std::string_view ncom = "zel_rt_range_ncom_record_t";
    constexpr std::string_view rcom = "zel_rt_range_rcom_record_t";
    std::string text(beginning);
    add_tag(text, "HUNTER", ncom_record_tags[hunter]);
    add_tag(text, "RCOM", rcom_record_tag);
    for (std::size_t target = 1; target <= target_count; ++target)
        add_tag(text, fmt::format("TARGET_{}", target), ncom_record_tags[target]);
    text += before_records;
    add_record(text, ncom, ncom_fields());
    add_record(text, rcom, rcom_fields());
    text += "\n#pragma pack(pop)\n";
    add_checks(text, ncom, ncom_fields());
    add_checks(text, rcom, rcom_fields());
    text += "\n/* clang-format on */\n\n#endif\n";
    return text;
}

} // namespace rtrange
