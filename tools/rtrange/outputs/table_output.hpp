// The interface of all outputs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// A table that has been written.
struct written_table {
    std::string place; ///< human-readable: a file, or a group in a file
    std::uint64_t rows;
    std::string name{}; ///< of the table, for example "hunter"
};

/// Takes the rows of a run. Tables without rows are not written.
class table_output {
public:
    table_output() = default;
    table_output(const table_output&) = delete;
    table_output& operator=(const table_output&) = delete;
    virtual ~table_output() = default;

    /// Appends a row to its table. Throws failure when it cannot be written.
    virtual void write(const table_row& row) = 0;

    /// Completes the output. Throws failure when anything could not be written.
    virtual void close() = 0;

    /// The tables with rows, in a fixed order.
    virtual std::vector<written_table> tables() const = 0;
};

} // namespace rtrange
