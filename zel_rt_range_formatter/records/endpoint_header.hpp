// The header that every record begins with.
#pragma once

#include <cstdint>

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// Where a unit's datagrams come from, 24 bytes.
struct endpoint_header {
    std::uint32_t source_ip;        ///< wire byte order
    std::uint32_t source_port;      ///< host byte order
    std::uint32_t destination_ip;   ///< wire byte order
    std::uint32_t destination_port; ///< host byte order
    std::uint64_t packet_count;     ///< datagrams of this unit since the last reset
};

#pragma pack(pop)

} // namespace zel::toolbox::rt_range
