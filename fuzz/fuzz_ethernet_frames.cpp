// Any sequence of "zel.eth.rtrange" raw packages in one instance.

#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_host.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::transform_all(harness::ethernet_formatter(), {data, size});
    return 0;
}
