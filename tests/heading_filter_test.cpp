// The heading filter: what it lets through, what it holds back.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// Headings in and out, each of these always one of the inputs so far. All vehicles share one
/// filter, so that the packets may take turns.
void expect_microradians(const std::vector<std::pair<std::int32_t, std::int32_t>>& steps) {
    instance plugin;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE(i);
        ncom_packet packet;
        packet.heading = steps[i].first;
        const bytes frame = ncom_frame(packet, i % 2 == 0 ? hunter_address : target_address);
        expect_doubles(first_package(plugin.decode(frame)), unit + 240,
                       {degrees(steps[i].second / 1000000.0)});
    }
}

void expect_degrees(const std::vector<std::pair<double, double>>& steps) {
    const auto microradians = [](double degrees) {
        return static_cast<std::int32_t>(std::lround(degrees / harness::degrees(1) * 1e6));
    };
    std::vector<std::pair<std::int32_t, std::int32_t>> converted;
    for (const auto& [input, output] : steps)
        converted.emplace_back(microradians(input), microradians(output));
    expect_microradians(converted);
}

TEST(heading_filter, starts_with_the_first_heading_unless_the_second_jumps_up) {
    expect_degrees({{10.5, 10.5},
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
    expect_degrees({{10.5, 10.5},
                    {16.5, 16.5}, // a jump; the whole part 10 before it is the forbidden one
                    {16.6, 16.6},
                    {12.0, 12.0},
                    {10.9, 12.0},
                    {11.1, 11.1}});
    // Downward is no jump.
    expect_degrees({{16.5, 16.5}, {10.5, 16.5}, {10.9, 16.5}, {14.0, 14.0}, {10.2, 14.0}});
}

TEST(heading_filter, truncates_toward_zero) {
    expect_degrees({{-10.5, -10.5},
                    {-4.0, -4.0},
                    {-10.2, -4.0},
                    {-8.5, -8.5},
                    {-10.9, -8.5}, // -10 as before the jump
                    {-11.2, -11.2},
                    {8.0, 8.0},
                    {10.4, 10.4}}); // 10 is not -10
    expect_degrees({{0.4, 0.4}, {0.2, 0.4}, {-0.9, 0.4}, {1.1, 1.1}, {0.9, 1.1}, {-1.5, -1.5}});
}

// Five degrees lie between 87266 and 87267 microradians.
TEST(heading_filter, draws_its_limits_at_five_degrees) {
    expect_microradians({{100000, 100000}, {187266, 100000}});
    expect_microradians({{100000, 100000}, {187267, 187267}, {274534, 187267}, {274533, 274533}});
}

} // namespace
} // namespace harness
