// The status channels of lane packets.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Decodes the eight data bytes of a lane status channel into the record; an unknown channel
/// changes nothing. The extended range packet has a different set of channels.
void decode_lane_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                rcom_unit_record& record);

} // namespace zel::toolbox::rt_range
