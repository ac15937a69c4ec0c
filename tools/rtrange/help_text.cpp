#include "tools/rtrange/help_text.hpp"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

namespace rtrange {
namespace {

/// Lists options as man pages do: spellings apart, and without what the messages about wrong
/// arguments say.
class option_format : public CLI::Formatter {
public:
    std::string make_option_name(const CLI::Option* option, bool is_positional) const override {
        std::string names = Formatter::make_option_name(option, is_positional);
        for (std::size_t at = 0; (at = names.find(',', at)) != names.npos; at += 2)
            names.replace(at, 1, ", ");
        return names;
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        if (option->get_items_expected_max() == 0)
            return {};
        const std::string preset = option->get_default_str();
        return " " + kind_of_value(option->get_type_name()) + (preset.empty() ? "" : "=" + preset);
    }

private:
    /// Of a type and a condition, such as "TEXT:{measured,record}", what tells more.
    static std::string kind_of_value(const std::string& type) {
        const std::size_t colon = type.find(':');
        const bool is_named = colon != type.npos && type.find_first_of("{[", colon) == type.npos;
        return is_named ? type.substr(0, colon) : type.substr(colon == type.npos ? 0 : colon + 1);
    }
};

struct command_examples {
    const char* command;
    const char* text;
};

constexpr command_examples examples[] = {
    {"decode", "  rtrange decode run.pcap\n"
               "  rtrange decode run.pcap --as hdf5 --units hunter,target1 --from 12.5 --to 60\n"
               "  rtrange decode --interface eth0 --output run"},
    {"report", "  rtrange report run.pcap\n"
               "  rtrange report run.pcap --fields satellites,position_accuracy_horizontal"},
    {"watch", "  rtrange watch --interface eth0 --output run\n"
              "  rtrange watch run.pcap --speed 20"},
    {"simulate", "  rtrange simulate run.pcap --scenario crossing --duration 60 --targets 2"},
    {"fields", "  rtrange fields | grep accuracy"},
};

constexpr const char* exit_codes =
    "Exit status:\n"
    "  0  success\n"
    "  1  an input could not be read to its end, nothing was decoded or selected, an output could "
    "not be written, or an earlier result was not to be replaced\n"
    "  2  invalid arguments";

} // namespace

void format_help(CLI::App& app) {
    const auto format = std::make_shared<option_format>();
    format->label("Positionals", "Arguments");
    app.formatter(format);
}

void add_help_footers(CLI::App& app) {
    app.footer(exit_codes);
    for (const auto& [command, text] : examples)
        app.get_subcommand(command)->footer("Examples:\n" + std::string(text));
}

} // namespace rtrange
