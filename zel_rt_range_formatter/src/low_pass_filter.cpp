#include "zel_rt_range_formatter/src/low_pass_filter.hpp"

#include <algorithm>

namespace zel::toolbox::rt_range {
namespace {

constexpr std::size_t order = 12;

// Deliberate: the coefficients are rounded decimals, so the steady-state gain is not 1.
constexpr std::array<double, order + 1> b{7e-11,     8.9e-10,   4.9e-09,   1.635e-08, 3.678e-08,
                                          5.885e-08, 6.866e-08, 5.885e-08, 3.678e-08, 1.635e-08,
                                          4.9e-09,   8.9e-10,   7e-11};
constexpr std::array<double, order + 1> a{1.0,       -9.5936,  42.3846,   -113.9982, 207.8427,
                                          -270.5559, 257.7919, -181.1231, 93.1152,   -34.155,
                                          8.4836,    -1.281,   0.0889};

} // namespace

sample_rows low_pass_filter(const sample_rows& input) {
    constexpr std::size_t columns = sample_row{}.size();
    sample_rows output;
    for (std::size_t column = 0; column < columns; ++column)
        output[0][column] = b[0] * input[0][column];
    // The order of the additions determines the last bits: each sum runs over ascending k, and the
    // sums are subtracted once.
    for (std::size_t n = 1; n < input.size(); ++n) {
        sample_row forward{};
        sample_row feedback{};
        const std::size_t reach = std::min(n, order);
        for (std::size_t k = 0; k <= reach; ++k)
            for (std::size_t column = 0; column < columns; ++column)
                forward[column] += b[k] * input[n - k][column];
        for (std::size_t k = 1; k <= reach; ++k)
            for (std::size_t column = 0; column < columns; ++column)
                feedback[column] += a[k] * output[n - k][column];
        for (std::size_t column = 0; column < columns; ++column)
            output[n][column] = forward[column] - feedback[column];
    }
    return output;
}

} // namespace zel::toolbox::rt_range
