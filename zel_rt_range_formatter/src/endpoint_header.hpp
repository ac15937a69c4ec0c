// The head that every unit record begins with.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::toolbox::rt_range {

#pragma pack(push, 1)

/// Where a unit's datagrams come from, 24 bytes.
struct endpoint_header {
    std::uint32_t source_ip;        ///< bytes as they stand on the wire
    std::uint32_t source_port;      ///< host byte order
    std::uint32_t destination_ip;   ///< bytes as they stand on the wire
    std::uint32_t destination_port; ///< host byte order
    std::uint64_t packet_count;     ///< datagrams of this unit since the last reset
};

#pragma pack(pop)

static_assert(offsetof(endpoint_header, source_ip) == 0);
static_assert(offsetof(endpoint_header, source_port) == 4);
static_assert(offsetof(endpoint_header, destination_ip) == 8);
static_assert(offsetof(endpoint_header, destination_port) == 12);
static_assert(offsetof(endpoint_header, packet_count) == 16);
static_assert(sizeof(endpoint_header) == 24);

} // namespace zel::toolbox::rt_range
