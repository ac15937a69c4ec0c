// The rows of the tables.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/loader/packages.hpp"

namespace rtrange {

/// One decoded package as a row of its table.
struct record_row {
    std::size_t table;                 ///< index
    std::uint64_t reference_timestamp; ///< nanoseconds since 1970
    std::string_view source;           ///< "ncom" or "rcom"; empty where the table has no source
    std::span<const std::uint8_t> record;
};

/// Replaces `rows` by the rows of the packages that one raw package was decoded into, in the
/// plug-in's order. They are valid as long as the packages. Throws failure when a record does not
/// have the size that this program knows.
void rows_of(const zel::host::package_array& packages, std::vector<record_row>& rows);

} // namespace rtrange
