// Any sequence of raw packages, while the host fails at any call and in any way.

#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_host.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::input input({data, size});
    harness::instance instance(input.byte() % 2 == 0 ? harness::recorder_formatter()
                                                     : harness::ethernet_formatter());
    recording_zelc_t& zelc = *recording_zelc();
    std::uint64_t timestamp = 1000;
    while (!input.empty()) {
        // Which call fails, in which way, and what else the host does out of the ordinary.
        zelc.calls = 0;
        zelc.failing_call = input.byte();
        const std::uint8_t flags = input.byte();
        zelc.failure = (flags & 1) != 0 ? RECORDING_BY_NOTHING : RECORDING_BY_ERROR;
        zelc.notes = (flags & 2) != 0;
        zelc.state_record = (flags & 4) != 0;
        zelc.state_code = (flags & 8) != 0 ? 1 : 0;
        zelc.state_description = (flags & 16) != 0 ? "worn out" : nullptr;
        instance.allocator_fails = (flags & 32) != 0;
        instance.services.log_calls = 0;
        instance.services.failing_log_call = (flags & 64) != 0 ? 1 : 0;
        fuzz::transform_next(instance, input, timestamp);
    }
    return 0;
}
