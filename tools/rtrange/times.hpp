// Times as people read them.
#pragma once

#include <cstdint>
#include <string>

namespace rtrange {

/// "2023-11-14 22:13:20.000 UTC" for nanoseconds since 1970.
std::string utc_text(std::uint64_t time_ns);

} // namespace rtrange
