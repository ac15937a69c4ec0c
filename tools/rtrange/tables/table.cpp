#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

const std::array<table_description, table_count>& table_descriptions() {
    static constexpr std::array<table_description, table_count> tables{{
        {"hunter", "hunter", "Packets of the hunter"},
        {"hunter_samples", "hunter", "Sample batches that the hunter's packets completed"},
        {"target1", "target1", "Packets of target 1"},
        {"target1_samples", "target1", "Sample batches that target 1's packets completed"},
        {"target2", "target2", "Packets of target 2"},
        {"target2_samples", "target2", "Sample batches that target 2's packets completed"},
        {"target3", "target3", "Packets of target 3"},
        {"target3_samples", "target3", "Sample batches that target 3's packets completed"},
        {"target4", "target4", "Packets of target 4"},
        {"target4_samples", "target4", "Sample batches that target 4's packets completed"},
        {"rcom", "rcom", "RCOM packets"},
        {"unidentified", "unidentified", "NCOM packets from addresses that are no unit's"},
        {"refused", "", "NCOM and RCOM frames that were refused"},
    }};
    return tables;
}

} // namespace rtrange
