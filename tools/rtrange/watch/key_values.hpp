// The values whose extremes must outlive the thinning of rows.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "tools/rtrange/tables/row_kind.hpp"

namespace rtrange {

/// Rates a row by one value; the row with the highest rating is kept. NaN: the value is unknown.
using row_rating = std::function<double(std::span<const double> row)>;

/// The ratings of rows of this kind with these columns, one for each extreme of a key figure.
std::vector<row_rating> key_ratings(row_kind kind, std::span<const std::string> columns);

} // namespace rtrange
