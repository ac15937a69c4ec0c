// The fields of the RCOM unit record.
#pragma once

#include <span>

#include "zel_rt_range_formatter/records/field.hpp"

namespace zel::toolbox::rt_range {

/// All fields, ordered by offset, without gaps: 1187 bytes.
std::span<const field> rcom_fields();

} // namespace zel::toolbox::rt_range
