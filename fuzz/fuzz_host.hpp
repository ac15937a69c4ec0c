// Feeds one instance of the plug-in, and stops the program at the first thing that must not be.
#pragma once

#include <span>

#include "tests/harness/plugin_under_test.hpp"

namespace fuzz {

/// Takes an input apart, byte after byte; gives zeros when it has come to its end.
class input {
public:
    explicit input(std::span<const std::uint8_t> bytes);

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte();
    /// The next `size` bytes, or what is left of them.
    harness::bytes take(std::size_t size);

private:
    std::span<const std::uint8_t> rest_;
};

/// Reads one raw package from the input and transforms it; checks everything that comes out. A raw
/// package is the step of its timestamp, which can go backwards, two bytes of size, and the data.
harness::outcome transform_next(harness::instance& instance, input& input,
                                std::uint64_t& timestamp);

/// Feeds a whole input to one instance, without any failure of the host.
void transform_all(const zel_formatter_dispatch_table_t& formatter,
                   std::span<const std::uint8_t> bytes);

} // namespace fuzz
