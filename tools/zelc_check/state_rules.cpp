#include <cstdint>
#include <string_view>
#include <vector>

#include "tools/zelc_check/rule.hpp"

namespace zelc_check {
namespace {

/// Two results of the same check are two records.
void gives_a_record_away(const zelc& library) {
    bool found = false;
    for_each_state([&](std::uint32_t state, std::uint16_t source_id, std::uint32_t nibble) {
        error_slot first(library), second(library);
        library.check_state(state, source_id, nibble, first.target());
        library.check_state(state, source_id, nibble, second.target());
        if (first.get() == nullptr || second.get() == nullptr)
            return;
        found = true;
        expect(first.get() != second.get(), "a record of its own for each call",
               "the same record twice");
    });
    if (!found)
        throw not_checkable("no state that was tried led to a record");
}

/// Whether printf with this format and without arguments prints a text.
bool is_format_without_arguments(std::string_view text) {
    for (std::size_t at = text.find('%'); at != text.npos; at = text.find('%', at + 2))
        if (text.substr(at, 2) != "%%")
            return false;
    return true;
}

void doubles_percent_signs(const zelc& library) {
    bool found = false;
    for_each_state([&](std::uint32_t state, std::uint16_t source_id, std::uint32_t nibble) {
        error_slot error(library);
        library.check_state(state, source_id, nibble, error.target());
        const char* const text =
            error.get() != nullptr ? library.get_description(error.get()) : nullptr;
        if (text == nullptr)
            return;
        found = true;
        expect(is_format_without_arguments(text), "each percent sign doubled",
               quoted(text) + " for state " + hexadecimal(state));
    });
    if (!found)
        throw not_checkable("no state that was tried led to a description");
}

} // namespace

std::vector<rule> state_rules() {
    return {
        {"S1", nullptr, "which states are good is known to the host alone"},
        {"S2", gives_a_record_away, nullptr},
        {"S3", doubles_percent_signs, nullptr},
    };
}

} // namespace zelc_check
