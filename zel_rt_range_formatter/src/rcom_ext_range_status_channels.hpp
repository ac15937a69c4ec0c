// The status channels of extended range packets.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Decodes the eight data bytes of a status channel into the record. False for a channel of 22 or
/// more, which changes nothing.
bool decode_ext_range_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                     rcom_unit_record& record);

} // namespace zel::toolbox::rt_range
