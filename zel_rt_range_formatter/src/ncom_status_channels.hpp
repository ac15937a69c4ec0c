// The status channels of NCOM packets.
#pragma once

#include <cstdint>

#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Decodes the eight data bytes of a status channel into the record; an unknown channel changes
/// nothing.
void decode_ncom_status_channel(std::uint8_t channel, const std::uint8_t* data,
                                ncom_unit_record& record);

} // namespace zel::toolbox::rt_range
