// The decoded records as a C header.
#pragma once

#include <string>

namespace rtrange {

/// The text of include/zel/rt_range_records.h: the record tags, and the two records as packed
/// structs with checks of their layout.
std::string records_header();

} // namespace rtrange
