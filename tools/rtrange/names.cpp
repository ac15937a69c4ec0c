#include "tools/rtrange/names.hpp"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <fmt/format.h>

namespace rtrange {
namespace {

/// Number of characters to insert, delete or replace to turn one name into the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::string lower_case(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return result;
}

/// The name with the smallest distance, unless more than a third of the characters differ.
std::vector<std::string_view> similar_name(std::string_view wanted,
                                           const std::vector<std::string_view>& names) {
    const std::size_t most = (wanted.size() + 1) / 3;
    std::size_t smallest = most + 1;
    std::string_view nearest;
    for (const std::string_view name : names) {
        // The distance is at least the difference in length, which takes no time to compare,
        // however long the given name is.
        if (name.size() > wanted.size() + most || wanted.size() > name.size() + most)
            continue;
        const std::size_t found = distance(wanted, lower_case(name));
        if (found < smallest) {
            smallest = found;
            nearest = name;
        }
    }
    if (smallest > most)
        return {};
    return {nearest};
}

/// The name that differs in case only; else the first few that begin with the given one; else those
/// that contain it; else a similar one. Ignores case.
std::vector<std::string_view> nearest_names(std::string_view given,
                                            const std::vector<std::string_view>& names) {
    constexpr std::size_t most = 4;
    const std::string wanted = lower_case(given);
    std::vector<std::string_view> beginning, containing;
    for (const std::string_view name : names) {
        if (lower_case(name) == wanted)
            return {name};
        const std::size_t at = wanted.empty() ? std::string::npos : lower_case(name).find(wanted);
        auto& list = at == 0 ? beginning : containing;
        if (at != std::string::npos && list.size() < most &&
            std::ranges::find(list, name) == list.end())
            list.push_back(name);
    }
    if (!beginning.empty())
        return beginning;
    if (!containing.empty())
        return containing;
    return similar_name(wanted, names);
}

} // namespace

std::string fault_of_name(std::string_view kind, std::string_view name,
                          const std::vector<std::string_view>& names) {
    if (std::ranges::find(names, name) != names.end())
        return {};
    const auto nearest = nearest_names(name, names);
    std::string fault = fmt::format("there is no {} '{}'", kind, name);
    if (!nearest.empty())
        fault += fmt::format("; the nearest name{} '{}'", nearest.size() == 1 ? " is" : "s are",
                             fmt::join(nearest, "', '"));
    return fault;
}

} // namespace rtrange
