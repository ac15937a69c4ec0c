// State of one unit between frames.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// State of the hunter or of a target.
struct unit_state {
    ncom_unit_record record{};
    std::uint32_t ncom_last_time_ms = 0; ///< time of the last NCOM packet within the GPS minute
};

} // namespace zel::toolbox::rt_range
