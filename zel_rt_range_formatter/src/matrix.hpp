// Three-by-three rotations.
#pragma once

#include <array>
#include <cstddef>

namespace zel::toolbox::rt_range {

using vector3 = std::array<double, 3>;

/// Rows of a matrix.
using matrix3 = std::array<vector3, 3>;

/// A times v. Each element is a sum that starts at 0.0 and runs over all columns in order, zeros
/// included: this determines the last bit and the sign of a zero.
constexpr vector3 product(const matrix3& a, const vector3& v) {
    vector3 result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += a[row][column] * v[column];
    return result;
}

/// A-transposed times v, summed in the same way.
constexpr vector3 transposed_product(const matrix3& a, const vector3& v) {
    vector3 result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += a[column][row] * v[column];
    return result;
}

} // namespace zel::toolbox::rt_range
