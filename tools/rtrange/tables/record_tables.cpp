#include "tools/rtrange/tables/record_tables.hpp"

#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

const std::array<record_table, record_table_count>& record_tables() {
    static constexpr std::array<record_table, record_table_count> tables{{
        {"hunter", "hunter", "Packets of the hunter", true},
        {"hunter_samples", "hunter", "Sample batches that the hunter's packets completed", true},
        {"target1", "target1", "Packets of target 1", true},
        {"target1_samples", "target1", "Sample batches that target 1's packets completed", true},
        {"target2", "target2", "Packets of target 2", true},
        {"target2_samples", "target2", "Sample batches that target 2's packets completed", true},
        {"target3", "target3", "Packets of target 3", true},
        {"target3_samples", "target3", "Sample batches that target 3's packets completed", true},
        {"target4", "target4", "Packets of target 4", true},
        {"target4_samples", "target4", "Sample batches that target 4's packets completed", true},
        {"rcom", "rcom", "RCOM packets", false},
    }};
    return tables;
}

std::span<const field> fields_of(std::size_t table) {
    return table == rcom_table ? rcom_fields() : ncom_fields();
}

std::size_t record_size(std::size_t table) {
    return table == rcom_table ? sizeof(rcom_unit_record) : sizeof(ncom_unit_record);
}

} // namespace rtrange
