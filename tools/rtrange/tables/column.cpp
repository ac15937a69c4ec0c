#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

cell_type stored_type(zel::toolbox::rt_range::field_type type) {
    using zel::toolbox::rt_range::field_type;
    switch (type) {
    case field_type::u8:
        return cell_type::u8;
    case field_type::u16:
        return cell_type::u16;
    case field_type::u32:
        return cell_type::u32;
    case field_type::u64:
        return cell_type::u64;
    case field_type::s16:
        return cell_type::s16;
    case field_type::s32:
        return cell_type::s32;
    case field_type::s64:
        return cell_type::s64;
    case field_type::f64:
        return cell_type::f64;
    case field_type::ipv4:
        break;
    }
    return cell_type::ipv4;
}

} // namespace rtrange
