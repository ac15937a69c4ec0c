// The rows and fields that the user selects.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tools/rtrange/tables/record_rows.hpp"
#include "tools/rtrange/tables/record_tables.hpp"
#include "tools/rtrange/times.hpp"

namespace rtrange {

/// Arguments of all commands that decode. An empty one selects everything.
struct selection_options {
    std::vector<std::string> fields;
    std::vector<std::string> units;
    std::string from;
    std::string to;
};

/// A message that says what is wrong with an argument; empty if it is valid.
std::string fault_of_field(const std::string& name);
std::string fault_of_unit(const std::string& name);
std::string fault_of_time(const std::string& text);

/// Selects rows by unit and time, and fields by name.
class selection {
public:
    /// Each option must be valid. Throws usage_failure when `from` is not before `to`.
    explicit selection(const selection_options& options);

    /// The selected fields of a table, in the order of the option. A table without any is not
    /// selected.
    std::span<const zel::toolbox::rt_range::field> fields(std::size_t table) const;

    /// Sets the start of the run, from which limits in seconds count.
    void set_start(std::uint64_t time_ns);

    /// Whether a row is selected.
    bool contains(const record_row& row) const;

    /// Whether all rows from this time on are after the upper limit.
    bool ends_before(std::uint64_t time_ns) const { return time_ns >= to_ns_; }

    /// The same for a run that starts at `start_ns`, before set_start().
    bool ends_before(std::uint64_t time_ns, std::uint64_t start_ns) const {
        return time_ns >= to_.time_ns + (to_.since_start ? start_ns : 0);
    }

private:
    std::array<std::vector<zel::toolbox::rt_range::field>, record_table_count> fields_;
    run_time from_{0, false};
    run_time to_{UINT64_MAX, false};
    std::uint64_t from_ns_ = 0;
    std::uint64_t to_ns_ = UINT64_MAX;
};

} // namespace rtrange
