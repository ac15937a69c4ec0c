#include "fuzz/fuzz_host.hpp"

#include <algorithm>

#include "tests/harness/expectations.hpp"

namespace fuzz {

input::input(std::span<const std::uint8_t> bytes) : rest_(bytes) {
    // A failed expectation ends the program, as a fuzzer wants it.
    GTEST_FLAG_SET(break_on_failure, true);
}

std::uint8_t input::byte() {
    const auto taken = take(1);
    return taken.empty() ? std::uint8_t{0} : taken[0];
}

harness::bytes input::take(std::size_t size) {
    const auto taken = rest_.first(std::min(size, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return {taken.begin(), taken.end()};
}

harness::outcome transform_next(harness::instance& instance, input& input,
                                std::uint64_t& timestamp) {
    timestamp += static_cast<std::uint64_t>(static_cast<std::int8_t>(input.byte()));
    const std::size_t low = input.byte();
    harness::raw_package raw;
    raw.data = input.take(low + 256U * (input.byte() % 2));
    raw.reference_timestamp = timestamp;
    const harness::outcome result = instance.transform(raw);
    harness::expect_sound(result, timestamp);
    return result;
}

void transform_all(const zel_formatter_dispatch_table_t& formatter,
                   std::span<const std::uint8_t> bytes) {
    harness::instance instance(formatter);
    std::uint64_t timestamp = 1000;
    for (input input(bytes); !input.empty();)
        EXPECT_EQ(transform_next(instance, input, timestamp).status, 0U);
}

} // namespace fuzz
