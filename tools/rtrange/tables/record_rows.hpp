// The rows of the tables.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/loader/packages.hpp"

namespace rtrange {

/// One decoded package on its way into its table.
struct record_row {
    std::size_t table;                 ///< index
    std::uint64_t reference_timestamp; ///< nanoseconds since 1970
    std::string_view source;           ///< "ncom" or "rcom"; empty where the table has no source
    std::span<const std::uint8_t> record;
};

/// The rows of what one raw package was decoded into, in the plug-in's order; valid as long as the
/// packages. Throws failure when a package holds no record of this program's layout.
void rows_of(const zel::host::package_array& packages, std::vector<record_row>& rows);

} // namespace rtrange
