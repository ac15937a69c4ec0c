// Decoded state of the RT-Range unit that sends RCOM.
#pragma once

#include "zel_rt_range_formatter/src/endpoint_header.hpp"

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

struct rcom_unit_record {
    endpoint_header endpoint;
};

#pragma pack(pop)

} // namespace zel::toolbox::rt_range
