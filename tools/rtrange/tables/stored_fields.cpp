#include "tools/rtrange/tables/stored_fields.hpp"

#include <algorithm>

namespace rtrange {

using zel::toolbox::rt_range::field;
using zel::toolbox::rt_range::field_type;

namespace {

std::uint64_t sign_bit_of(field_type type) {
    const bool is_signed =
        type == field_type::s16 || type == field_type::s32 || type == field_type::s64;
    return is_signed ? std::uint64_t{1} << (8 * size_of(type) - 1) : 0;
}

} // namespace

stored_field::stored_field(const field& field, std::size_t record_size)
    : word_offset_(std::min(field.offset, record_size - sizeof(std::uint64_t))),
      shift_(static_cast<unsigned>(8 * (field.offset - word_offset_))),
      mask_(~std::uint64_t{0} >> (64 - 8 * size_of(field.type))), sign_(sign_bit_of(field.type)) {}

} // namespace rtrange
