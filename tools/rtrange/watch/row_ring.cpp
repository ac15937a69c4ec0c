#include "tools/rtrange/watch/row_ring.hpp"

#include <algorithm>
#include <cmath>

namespace rtrange {
namespace {

constexpr double bucket_s = 0.2;
/// The rows of a second are still whole when the next update is made of them.
constexpr std::int64_t whole_buckets = 5;
/// Only packets at rates that no page can show reach this limit.
constexpr std::size_t most_whole_rows = 1024;

} // namespace

void row_ring::add(std::uint64_t number, std::span<const double> row) {
    const auto index = static_cast<std::int64_t>(std::floor(row[0] / bucket_s));
    if (buckets_.empty() || buckets_.back().index != index)
        buckets_.push_back({index, {}});
    numbered_rows& rows = buckets_.back().rows;
    rows.numbers.push_back(number);
    rows.values.insert(rows.values.end(), row.begin(), row.end());
    ++whole_rows_;
    while (thinned_ < buckets_.size() - 1 &&
           (buckets_[thinned_].index <= index - whole_buckets || whole_rows_ > most_whole_rows))
        thin_oldest();
    if (whole_rows_ > most_whole_rows) {
        thin(rows);
        whole_rows_ = rows.numbers.size();
    }
    constexpr auto buckets = static_cast<std::int64_t>(length_s / bucket_s);
    while (buckets_.front().index < index - buckets && thinned_ > 0) {
        buckets_.pop_front();
        --thinned_;
    }
}

void row_ring::copy(std::uint64_t after, std::uint64_t last, numbered_rows& rows) const {
    auto next = std::ranges::upper_bound(
        buckets_, after, {}, [](const bucket& each) { return each.rows.numbers.back(); });
    for (; next != buckets_.end() && next->rows.numbers.front() <= last; ++next) {
        const auto& [numbers, values] = next->rows;
        const auto begin = std::ranges::upper_bound(numbers, after) - numbers.begin();
        const auto end = std::ranges::upper_bound(numbers, last) - numbers.begin();
        const auto width = static_cast<std::ptrdiff_t>(width_);
        rows.numbers.insert(rows.numbers.end(), numbers.begin() + begin, numbers.begin() + end);
        rows.values.insert(rows.values.end(), values.begin() + begin * width,
                           values.begin() + end * width);
    }
}

void row_ring::clear() {
    buckets_.clear();
    thinned_ = 0;
    whole_rows_ = 0;
}

void row_ring::thin_oldest() {
    numbered_rows& rows = buckets_[thinned_].rows;
    whole_rows_ -= rows.numbers.size();
    thin(rows);
    rows.numbers.shrink_to_fit();
    rows.values.shrink_to_fit();
    ++thinned_;
}

void row_ring::thin(numbered_rows& rows) const {
    std::vector<std::size_t> kept{0, rows.numbers.size() - 1};
    for (const row_rating& rating : ratings_) {
        std::size_t best = 0;
        double highest = rating(row(rows, 0));
        for (std::size_t i = 1; i < rows.numbers.size(); ++i)
            if (const double value = rating(row(rows, i));
                value > highest || (std::isnan(highest) && !std::isnan(value))) {
                best = i;
                highest = value;
            }
        kept.push_back(best);
    }
    std::ranges::sort(kept);
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    for (std::size_t to = 0; to < kept.size(); ++to) {
        rows.numbers[to] = rows.numbers[kept[to]];
        std::ranges::copy(row(rows, kept[to]),
                          rows.values.begin() + static_cast<std::ptrdiff_t>(to * width_));
    }
    rows.numbers.resize(kept.size());
    rows.values.resize(kept.size() * width_);
}

} // namespace rtrange
