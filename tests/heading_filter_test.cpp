// The heading filter: what it lets through, what it holds back.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tests/harness/frames.hpp"

namespace {

using namespace harness;

constexpr std::size_t record = 4;         ///< where the record begins in the package's data
constexpr double pi = 3.1415927410125732; ///< single precision, as in all conversions of angles

std::int32_t microradians(double degrees) {
    return static_cast<std::int32_t>(std::lround(degrees * pi / 180.0 * 1e6));
}

struct step {
    double input;
    double output; ///< always one of the inputs so far
};

void expect_heading(instance& unit, std::int32_t input, std::int32_t output,
                    const ip_address& source = hunter_address, std::uint64_t timestamp = 1000) {
    ncom_packet packet;
    packet.heading = input;
    EXPECT_EQ(
        unit.decode(ncom_frame(packet, source), timestamp).decoded().at(0).f64_bits(record + 240),
        std::bit_cast<std::uint64_t>(output / 1000000.0 * 180.0 / pi))
        << "input " << input << ", expected " << output;
}

/// In degrees. All vehicles share one filter, so that the packets may take turns.
void expect_headings(const std::vector<step>& steps) {
    instance unit;
    for (std::size_t i = 0; i < steps.size(); ++i)
        expect_heading(unit, microradians(steps[i].input), microradians(steps[i].output),
                       i % 2 == 0 ? hunter_address : target_address);
}

TEST(heading_filter, starts_with_the_first_heading_unless_the_second_jumps_up) {
    expect_headings({{10.5, 10.5},
                     {12.5, 10.5}, // no jump; its whole part 12 stays the forbidden one
                     {12.7, 10.5},
                     {13.2, 13.2},
                     {12.9, 13.2}, // 12 again
                     {19.0, 13.2}, // 5.8 away
                     {17.9, 17.9},
                     {22.0, 22.0},
                     {10.5, 22.0},
                     {17.5, 17.5},
                     {12.6, 17.5},
                     {13.1, 13.1},
                     {-13.5, -13.5}, // only the magnitudes are compared
                     {-12.5, -12.5},
                     {12.5, -12.5}});
    expect_headings({{10.5, 10.5},
                     {16.5, 16.5}, // a jump; the whole part 10 before it is the forbidden one
                     {16.6, 16.6},
                     {12.0, 12.0},
                     {10.9, 12.0},
                     {11.1, 11.1}});
    expect_headings({{16.5, 16.5},
                     {10.5, 16.5}, // downward is no jump
                     {10.9, 16.5},
                     {14.0, 14.0},
                     {10.2, 14.0}});
}

TEST(heading_filter, truncates_toward_zero) {
    expect_headings({{-10.5, -10.5},
                     {-4.0, -4.0},
                     {-10.2, -4.0},
                     {-8.5, -8.5},
                     {-10.9, -8.5}, // -10 as before the jump
                     {-11.2, -11.2},
                     {8.0, 8.0},
                     {10.4, 10.4}}); // 10 is not -10
    expect_headings({{0.4, 0.4}, {0.2, 0.4}, {-0.9, 0.4}, {1.1, 1.1}, {0.9, 1.1}, {-1.5, -1.5}});
}

// Five degrees lie between 87266 and 87267 microradians.
TEST(heading_filter, draws_its_limits_at_five_degrees) {
    constexpr std::int32_t start = 100000;
    instance below;
    expect_heading(below, start, start);
    expect_heading(below, start + 87266, start);
    instance above;
    expect_heading(above, start, start);
    expect_heading(above, start + 87267, start + 87267);
    expect_heading(above, start + 2 * 87267, start + 87267);
    expect_heading(above, start + 87267 + 87266, start + 87267 + 87266);
}

TEST(heading_filter, starts_afresh_when_time_goes_backward) {
    instance unit;
    const std::int32_t first = microradians(10.5);
    const std::int32_t second = microradians(16.5);
    const std::int32_t far_off = microradians(40.5);
    expect_heading(unit, first, first, hunter_address, 20);
    expect_heading(unit, second, second, hunter_address, 20);
    expect_heading(unit, far_off, second, hunter_address, 20);
    expect_heading(unit, far_off, far_off, hunter_address, 19);
    expect_heading(unit, microradians(41.5), far_off, hunter_address, 19);
}

} // namespace
