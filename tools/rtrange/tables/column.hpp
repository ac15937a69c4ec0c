// Columns and cells of the tables.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "zel_rt_range_formatter/records/field.hpp"

namespace rtrange {

/// What the cells of a column hold. Values of the first group are always known.
enum class cell_type : std::uint8_t {
    u8,
    u16,
    u32,
    u64,
    s16,
    s32,
    s64,
    f64,  ///< any number, also infinite or not a number
    ipv4, ///< an address in wire byte order
    text, ///< a constant text, at least as long as the output is open
    // Values that may be unknown:
    number,       ///< f64
    whole_number, ///< an integer below 2^53, held as f64
    address       ///< ipv4
};

/// One column of a table. The texts outlive all outputs.
struct column {
    const char* name;
    cell_type type;
    const char* unit; ///< empty for a number without unit
    const char* meaning;
    std::size_t text_size = 0; ///< of a text: longest one in bytes; outputs may cut longer ones
    /// Of a text: those that it can be, if they are known; always in the same order.
    std::span<const char* const> known_texts = {};
};

/// The content of one cell: an integer, the bits of a double, or the address of a text that ends
/// with a zero byte.
using cell = std::uint64_t;

/// The content of a cell of type number or whole_number whose value is unknown.
inline constexpr cell unknown_number =
    std::bit_cast<cell>(std::numeric_limits<double>::quiet_NaN());

/// The content of a cell of type address whose value is unknown.
inline constexpr cell unknown_address = ~cell{0};

inline double number_in(cell content) {
    return std::bit_cast<double>(content);
}

inline cell cell_of(double number) {
    return std::bit_cast<cell>(number);
}

inline cell cell_of(const char* text) {
    return std::bit_cast<std::uintptr_t>(text);
}

inline const char* text_in(cell content) {
    return std::bit_cast<const char*>(static_cast<std::uintptr_t>(content));
}

/// Largest text_size.
inline constexpr std::size_t longest_text = 100;

/// The type of a column that holds a field of a record as it is stored.
cell_type stored_type(zel::toolbox::rt_range::field_type type);

} // namespace rtrange
