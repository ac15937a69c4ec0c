// The rows and fields that the user selects.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rtrange/times.hpp"

namespace rtrange {

/// Arguments of all commands that decode. An empty one selects everything.
struct selection_options {
    std::vector<std::string> fields;
    std::vector<std::string> also_fields; ///< added to `fields` where a table has them
    std::vector<std::string> units;
    std::string from;
    std::string to;
};

/// The names that can be selected, each once.
const std::vector<std::string_view>& selectable_fields();
const std::vector<std::string_view>& selectable_units();

/// A message that says what is wrong with an argument; empty if it is valid.
std::string fault_of_field(const std::string& name);
std::string fault_of_unit(const std::string& name);
std::string fault_of_time(const std::string& text);

/// Selects rows by unit and time, and columns by name.
class selection {
public:
    /// Each option must be valid. Throws usage_failure when `from` is not before `to`.
    explicit selection(const selection_options& options);

    /// Whether the tables of a unit are selected. Tables of no unit have an empty name.
    bool has_unit(std::string_view unit) const;

    /// Those of `all` whose names are selected, each once, in the order of the option; all if there
    /// is no such option.
    template <typename T, typename Name>
    std::vector<T> in_order(std::span<const T> all, Name name) const {
        if (fields_.empty())
            return {all.begin(), all.end()};
        std::vector<T> result;
        for (const std::string& wanted : fields_)
            for (const T& entry : all)
                if (std::string_view(std::invoke(name, entry)) == wanted)
                    result.push_back(entry);
        return result;
    }

    /// Sets the start of the run, from which limits in seconds count.
    void set_start(std::uint64_t time_ns);

    /// Whether rows of this time are selected.
    bool contains(std::uint64_t time_ns) const { return time_ns >= from_ns_ && time_ns < to_ns_; }

    /// Whether all rows from this time on are after the upper limit.
    bool ends_before(std::uint64_t time_ns) const { return time_ns >= to_ns_; }

    /// The same for a run that starts at `start_ns`, before set_start().
    bool ends_before(std::uint64_t time_ns, std::uint64_t start_ns) const {
        return time_ns >= to_.time_ns + (to_.since_start ? start_ns : 0);
    }

private:
    std::vector<std::string> fields_; ///< each once
    std::vector<std::string> units_;
    run_time from_{0, false};
    run_time to_{UINT64_MAX, false};
    std::uint64_t from_ns_ = 0;
    std::uint64_t to_ns_ = UINT64_MAX;
};

} // namespace rtrange
