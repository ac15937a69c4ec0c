// A host that fails at any call.

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

constexpr std::uint32_t file_exists = 0xA0030011;
constexpr std::uint32_t failed = 0xA0000FA5;
constexpr std::uint32_t no_memory = 0xA003000C;
constexpr std::uint32_t timed_out = 0xA00005B4;

const bytes& frame() {
    static const bytes frame = ncom_frame(ncom_packet{});
    return frame;
}

/// Feeds packets until the next one completes a sample batch.
void fill_batch(instance& subject) {
    for (int i = 0; i < 29; ++i)
        EXPECT_EQ(subject.decode(frame()).decoded().size(), 1U);
}

/// Host calls of a frame that completes a batch: the bare frame, then two for each of 31 packages.
constexpr unsigned calls_of_a_batch = 1 + 2 * 31;

TEST(host_failure, every_package_call_can_fail_and_nothing_leaks) {
    for (const recording_failure_t failure :
         {RECORDING_BY_ERROR, RECORDING_BY_STALE_POINTER, RECORDING_BY_NOTHING}) {
        for (unsigned call = 1; call <= calls_of_a_batch; ++call) {
            SCOPED_TRACE(call);
            instance subject;
            fill_batch(subject);
            recording_zelc_t& zelc = *recording_zelc();
            zelc.calls = 0;
            zelc.failing_call = call;
            zelc.failure = failure;
            const outcome result = subject.decode(frame());
            // An odd call after the first assigns a format type, and knows no way to give nothing.
            const bool by_error = failure != RECORDING_BY_NOTHING || (call > 1 && call % 2 == 1);
            EXPECT_EQ(result.status, by_error ? file_exists : failed);
            EXPECT_EQ(result.error.description,
                      by_error ? "host failure" : "failed to allocate 'zel_package_t' instance");
            EXPECT_EQ(zelc.calls, call);
        }
    }
}

TEST(host_failure, rcom_output_can_fail_and_the_decoder_goes_on) {
    const struct {
        bytes frame;
        unsigned packages;
    } kinds[] = {{rcom_frame(range_packet(1)), 2},
                 {rcom_frame(lane_packet{}), 1},
                 {wrapped_frame(target_address), 2}};
    for (const auto& kind : kinds) {
        for (unsigned call = 1; call <= 1 + 2 * kind.packages; ++call) {
            SCOPED_TRACE(call);
            instance subject;
            subject.decode(identification(1, hunter_address, target_address));
            recording_zelc()->calls = 0;
            recording_zelc()->failing_call = call;
            EXPECT_EQ(subject.decode(kind.frame).status, file_exists);
            recording_zelc()->failing_call = 0;
            const outcome next = subject.decode(kind.frame);
            EXPECT_EQ(next.decoded().size(), kind.packages);
            // The first call is for the bare frame, before the decoder has seen anything.
            EXPECT_EQ(first_package(next).u64(20), call == 1 ? 2U : 3U);
        }
    }
}

TEST(host_failure, a_note_is_no_failure) {
    instance subject;
    fill_batch(subject);
    recording_zelc()->notes = true;
    const outcome result = subject.decode(frame());
    EXPECT_EQ(result.status, 0U);
    EXPECT_EQ(result.packages.size(), 32U);
    EXPECT_EQ(recording_zelc()->calls, 1U + 29 * 3 + calls_of_a_batch - 1);
}

TEST(host_failure, an_interrupted_batch_is_lost_and_the_next_one_starts_from_nothing) {
    instance subject;
    fill_batch(subject);
    recording_zelc()->calls = 0;
    recording_zelc()->failing_call = 20;
    EXPECT_EQ(subject.decode(frame()).status, file_exists);
    recording_zelc()->failing_call = 0;
    fill_batch(subject);
    const outcome result = subject.decode(frame());
    EXPECT_EQ(result.decoded().size(), 31U);
    EXPECT_EQ(result.packages.back().u64(4 + 16), 60U) << "the interrupted packet was decoded";
}

TEST(host_failure, no_array_is_out_of_memory) {
    instance subject;
    subject.allocator_fails = true;
    const outcome result = subject.decode(frame());
    EXPECT_EQ(result.status, no_memory);
    EXPECT_EQ(result.error.description, "memory allocation failed");
    subject.allocator_fails = false;
    EXPECT_EQ(subject.decode(frame()).decoded().at(0).u64(4 + 16), 2U);

    // For no package, no array will do.
    const bytes block = recorder_package({}).block();
    subject.allocator_fails = true;
    zel_package_t** packages = nullptr;
    std::size_t count = 1;
    EXPECT_EQ(subject.transformation->transform(
                  subject.handle, reinterpret_cast<const zel_raw_package_t*>(block.data()),
                  &packages, &count, &subject.allocator, nullptr),
              0U);
    EXPECT_EQ(count, 0U);
}

TEST(host_failure, a_failing_log_ends_the_call_alone) {
    instance subject;
    for (const bytes& dropped : {cut(frame(), 13), with(frame(), {{23, {1}}})}) {
        subject.services.log_calls = 0;
        subject.services.failing_log_call = 1;
        const outcome result = subject.decode(dropped);
        EXPECT_EQ(result.status, timed_out);
        EXPECT_EQ(result.error.description, "log is full");
        // The throttle has not moved on: the record comes with the next frame.
        EXPECT_EQ(subject.decode(dropped).logs.size(), 1U);
    }
    EXPECT_EQ(subject.decode(frame()).decoded().size(), 1U);
}

TEST(host_failure, a_log_function_may_transform_on_the_same_instance) {
    instance subject;
    outcome inner;
    subject.services.on_next_log = [&] { inner = subject.decode(frame()); };
    const bytes foreign(60, 0);
    const outcome outer = subject.decode(foreign);
    ASSERT_EQ(outer.packages.size(), 1U);
    EXPECT_EQ(outer.packages[0].data.size(), foreign.size());
    ASSERT_EQ(inner.packages.size(), 2U);
    EXPECT_EQ(inner.packages[0].data.size(), frame().size());
    EXPECT_EQ(inner.decoded().size(), 1U);
    EXPECT_EQ(subject.decode(frame()).packages.size(), 2U);
}

TEST(host_failure, a_failing_log_of_the_state_leaks_no_verdict) {
    instance subject;
    recording_zelc_t& zelc = *recording_zelc();
    zelc.state_record = true;
    zelc.state_code = 3;
    zelc.state_description = "worn out";
    for (const unsigned failing : {1U, 2U}) {
        subject.services.log_calls = 0;
        subject.services.failing_log_call = failing;
        EXPECT_EQ(subject.decode(frame()).status, timed_out);
    }
}

} // namespace
} // namespace harness
