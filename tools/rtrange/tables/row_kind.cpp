#include "tools/rtrange/tables/row_kind.hpp"

namespace rtrange {

row_kind kind_of(const table_row& row) {
    if (row.table == rcom_table)
        return row_kind::rcom;
    return row.packet == packet_kind::range ? row_kind::range : row_kind::navigation;
}

std::string_view name_of(row_kind kind) {
    switch (kind) {
    case row_kind::navigation:
        return "navigation";
    case row_kind::range:
        return "range";
    case row_kind::rcom:
        return "rcom";
    }
    return "";
}

} // namespace rtrange
