// The part of a run that the user wants to have.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tools/rtrange/outputs/record_tables.hpp"
#include "tools/rtrange/times.hpp"

namespace rtrange {

/// Arguments of all commands with an output. An empty one selects everything.
struct selection_options {
    std::vector<std::string> fields;
    std::vector<std::string> units;
    std::string from;
    std::string to;
};

/// What is wrong with an argument, for people; empty if nothing is.
std::string fault_of_field(const std::string& name);
std::string fault_of_unit(const std::string& name);
std::string fault_of_time(const std::string& text);

/// Chooses rows by unit and time, and fields by name.
class selection {
public:
    /// The options have no faults of their own. Throws usage_failure when the run would have to end
    /// before it begins.
    explicit selection(const selection_options& options);

    /// The selected fields of a table, in the order in which they were asked for. A table without
    /// any is not selected.
    std::span<const zel::toolbox::rt_range::field> fields(std::size_t table) const;

    /// Tells when the run begins, which limits in seconds count from.
    void begin_run(std::uint64_t time_ns);

    /// Whether a row is selected.
    bool contains(const record_row& row) const;

    /// Whether the run has come to its upper limit.
    bool ends_before(std::uint64_t time_ns) const { return time_ns >= to_ns_; }

private:
    std::array<std::vector<zel::toolbox::rt_range::field>, record_table_count> fields_;
    run_time from_{0, false};
    run_time to_{UINT64_MAX, false};
    std::uint64_t from_ns_ = 0;
    std::uint64_t to_ns_ = UINT64_MAX;
};

} // namespace rtrange
