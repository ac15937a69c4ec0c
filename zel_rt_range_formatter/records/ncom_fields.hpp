// The fields of the NCOM unit record.
#pragma once

#include <span>

#include "zel_rt_range_formatter/records/field.hpp"

namespace zel::toolbox::rt_range {

/// All fields, ordered by offset, without gaps: 869 bytes.
std::span<const field> ncom_fields();

} // namespace zel::toolbox::rt_range
