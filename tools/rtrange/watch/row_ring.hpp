// The last minutes of a stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "tools/rtrange/watch/key_values.hpp"

namespace rtrange {

/// Rows one after the other, with the number of each.
struct numbered_rows {
    std::vector<std::uint64_t> numbers; ///< ascending
    std::vector<double> values;         ///< those of the first row, then those of the second...
};

/// Keeps the rows of the last second, and those of the last ten minutes thinned: of each fifth of a
/// second, the first, the last, and the rows with the extremes of the key figures. Its memory does
/// not depend on how many rows there are.
class row_ring {
public:
    static constexpr double length_s = 600.0;

    /// `width` is the number of values per row, of which the first is the time in seconds.
    row_ring(std::size_t width, std::vector<row_rating> ratings)
        : width_(width), ratings_(std::move(ratings)) {}

    /// Appends a row, which must not be earlier than the one before.
    void add(std::uint64_t number, std::span<const double> row);

    /// Appends the rows with numbers above `after` up to `last`.
    void copy(std::uint64_t after, std::uint64_t last, numbered_rows& rows) const;

    void clear();

private:
    struct bucket {
        std::int64_t index; ///< of its fifth of a second
        numbered_rows rows;
    };

    void thin_oldest();
    void thin(numbered_rows& rows) const;
    std::span<const double> row(const numbered_rows& rows, std::size_t at) const {
        return std::span(rows.values).subspan(at * width_, width_);
    }

    std::size_t width_;
    std::vector<row_rating> ratings_;
    std::deque<bucket> buckets_;
    std::size_t thinned_ = 0;    ///< buckets at the front that have been thinned
    std::size_t whole_rows_ = 0; ///< rows in the others
};

} // namespace rtrange
