#include "fuzz/fuzz_host.hpp"

#include "tests/harness/expectations.hpp"

namespace fuzz {

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
