// Description of the fields of a record.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

#include "zel_rt_range_formatter/records/field_origin.hpp"

namespace zel::toolbox::rt_range {

/// Type of a stored field, little-endian. An ipv4 field is a u32 that holds an address in wire byte
/// order.
enum class field_type : std::uint8_t { u8, u16, u32, u64, s16, s32, s64, f64, ipv4 };

/// One field of a record.
struct field {
    const char* name;
    std::size_t offset; ///< bytes from the start of the record
    field_type type;
    field_origin origin;
    const char* unit; ///< empty for a number without unit
    const char* meaning;
};

/// Size of a stored field in bytes.
constexpr std::size_t size_of(field_type type) {
    switch (type) {
    case field_type::u8:
        return 1;
    case field_type::u16:
    case field_type::s16:
        return 2;
    case field_type::u32:
    case field_type::s32:
    case field_type::ipv4:
        return 4;
    case field_type::u64:
    case field_type::s64:
    case field_type::f64:
        return 8;
    }
    return 0; // Unreachable: each type has a case.
}

/// The name of the type that users see, for example "f64".
constexpr const char* name_of(field_type type) {
    switch (type) {
    case field_type::u8:
        return "u8";
    case field_type::u16:
        return "u16";
    case field_type::u32:
        return "u32";
    case field_type::u64:
        return "u64";
    case field_type::s16:
        return "s16";
    case field_type::s32:
        return "s32";
    case field_type::s64:
        return "s64";
    case field_type::f64:
        return "f64";
    case field_type::ipv4:
        return "ipv4";
    }
    return ""; // Unreachable: each type has a case.
}

/// Field type of a record member of type T.
template <typename T>
consteval field_type stored_as() {
    if constexpr (std::same_as<T, double>)
        return field_type::f64;
    else if constexpr (std::same_as<T, std::uint8_t>)
        return field_type::u8;
    else if constexpr (std::same_as<T, std::uint16_t>)
        return field_type::u16;
    else if constexpr (std::same_as<T, std::uint32_t>)
        return field_type::u32;
    else if constexpr (std::same_as<T, std::uint64_t>)
        return field_type::u64;
    else if constexpr (std::same_as<T, std::int16_t>)
        return field_type::s16;
    else if constexpr (std::same_as<T, std::int32_t>)
        return field_type::s32;
    else {
        static_assert(std::same_as<T, std::int64_t>);
        return field_type::s64;
    }
}

/// One row of a field table. Does not compile if the record's member is not at `offset`.
consteval field field_at(std::size_t offset, std::size_t member_offset, const char* name,
                         field_type type, const char* unit, field_origin origin,
                         const char* meaning) {
    if (member_offset != offset)
        throw "the member is at another offset than its row says";
    return {name, offset, type, origin, unit, meaning};
}

/// Whether the fields, in this order, fill a record of `size` bytes without gap or overlap.
consteval bool cover(std::span<const field> fields, std::size_t size) {
    std::size_t end = 0;
    for (const field& field : fields) {
        if (field.offset != end)
            return false;
        end += size_of(field.type);
    }
    return end == size;
}

} // namespace zel::toolbox::rt_range
