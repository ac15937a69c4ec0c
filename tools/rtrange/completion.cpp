#include "tools/rtrange/completion.hpp"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include <CLI/CLI.hpp>

#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {
namespace {

struct completions {
    const char* kind;
    std::vector<std::string> candidates;
};

/// The values that an option states in its help, as in "{measured,record}".
std::vector<std::string> stated_values(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t first = type.find('{'), end = type.find('}');
    if (first == type.npos || end == type.npos)
        return {};
    return CLI::detail::split(type.substr(first + 1, end - first - 1), ',');
}

/// Names for the last place of a list such as "heading,ro", each with the names before it.
std::vector<std::string> continued(const std::string& list,
                                   const std::vector<std::string_view>& names) {
    const std::string before = list.substr(0, list.rfind(',') + 1); // empty without a comma
    const std::vector<std::string> given = CLI::detail::split(before, ',');
    std::vector<std::string> result;
    for (const std::string_view name : names)
        if (std::ranges::find(given, name) == given.end())
            result.push_back(before + std::string(name));
    return result;
}

completions values_of(const CLI::Option& option, const std::string& word) {
    if (option.check_lname("fields"))
        return {"list", continued(word, selectable_fields())};
    if (option.check_lname("units"))
        return {"list", continued(word, selectable_units())};
    const std::string type = option.get_type_name();
    if (option.get_name(true) == "CAPTURE")
        return {"captures", {}};
    if (type == "FILE" || type == "PATH")
        return {"files", {}};
    return {"words", stated_values(option)};
}

std::vector<std::string> spellings(const CLI::Option& option) {
    std::vector<std::string> result;
    for (const std::string& name : option.get_snames())
        result.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        result.push_back("--" + name);
    return result;
}

/// The options that have not been given yet.
completions options_of(const CLI::App& parser, const std::vector<std::string>& given) {
    completions result{"words", {}};
    for (const CLI::Option* option : parser.get_options()) {
        const auto names = spellings(*option);
        const bool hidden = option->get_group().empty();
        if (!hidden && std::ranges::find_first_of(given, names) == given.end())
            result.candidates.insert(result.candidates.end(), names.begin(), names.end());
    }
    return result;
}

completions commands_of(const CLI::App& parser) {
    completions result{"words", {}};
    for (const CLI::App* command : parser.get_subcommands({}))
        result.candidates.push_back(command->get_name());
    return result;
}

/// What can stand for the argument without a name at this place.
completions positional_of(const CLI::App& parser, std::size_t place) {
    for (const CLI::Option* option : parser.get_options())
        if (option->get_positional()) {
            const auto most = static_cast<std::size_t>(option->get_items_expected_max());
            if (place < most)
                return values_of(*option, "");
            place -= most;
        }
    return commands_of(parser);
}

/// The option with this spelling, if a value has to follow it; otherwise null.
const CLI::Option* option_with_value(const CLI::App& parser, const std::string& word) {
    if (!word.starts_with('-') || word.size() < 2)
        return nullptr;
    const CLI::Option* const option = parser.get_option_no_throw(word);
    return option != nullptr && option->get_items_expected_max() > 0 ? option : nullptr;
}

/// The command with this name; null if there is none.
const CLI::App* command_of(const CLI::App& parser, const std::string& name) {
    const auto found = parser.get_subcommands(
        [&name](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

completions completions_of(const CLI::App& app, const std::vector<std::string>& words) {
    const CLI::App* parser = &app;
    const CLI::Option* before = nullptr; // waits for its value
    std::size_t place = 0;
    const std::string& last = words.back();
    for (const std::string& word : std::span(words).first(words.size() - 1)) {
        const CLI::App* const command = command_of(*parser, word);
        if (before != nullptr)
            before = nullptr;
        else if (command != nullptr)
            parser = command;
        else if (word.starts_with('-') && word != "-")
            before = option_with_value(*parser, word);
        else
            ++place;
    }
    if (before != nullptr)
        return values_of(*before, last);
    if (last.starts_with('-'))
        return options_of(*parser, words);
    return positional_of(*parser, place);
}

} // namespace

void print_completions(const CLI::App& parser, std::vector<std::string> words) {
    // Bash makes a word of the sign in --view=record.
    if (words.empty() || words.back() == "=")
        words.emplace_back();
    std::erase(words, "=");
    const auto [kind, candidates] = completions_of(parser, words);
    print("{}\n", kind);
    for (const std::string& candidate : candidates)
        if (candidate.starts_with(words.back()))
            print("{}\n", candidate);
}

} // namespace rtrange
