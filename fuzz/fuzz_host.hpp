// Feeds one instance of the plug-in, and stops the program at the first thing that must not be.
#pragma once

#include <cstdint>
#include <span>

#include "fuzz/input.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace fuzz {

/// Reads one raw package from the input and transforms it; checks everything that comes out. A raw
/// package is the step of its timestamp, which can go backwards, two bytes of size, and the data.
harness::outcome transform_next(harness::instance& instance, input& input,
                                std::uint64_t& timestamp);

/// Feeds a whole input to one instance, without any failure of the host.
void transform_all(const zel_formatter_dispatch_table_t& formatter,
                   std::span<const std::uint8_t> bytes);

} // namespace fuzz
