// Rules for a zelc, and what a check of one finds.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/zelc_check/zelc.hpp"

namespace zelc_check {

/// One rule of docs/zelc.md.
struct rule {
    const char* id;
    /// Returns if the library keeps the rule, and throws broken_rule or not_checkable otherwise.
    /// Null if no program can check the rule. May run on several threads at once.
    void (*check)(const zelc& library);
    const char* obstacle; ///< why no program can check the rule
};

/// What was expected of the library, and what was seen.
class broken_rule : public std::runtime_error {
public:
    broken_rule(const std::string& expected, const std::string& seen)
        : std::runtime_error("expected " + expected + ", saw " + seen) {}
};

/// Why this library does not show whether it keeps the rule.
class not_checkable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws broken_rule unless `holds`.
void expect(bool holds, const std::string& expected, const std::string& seen);

/// Expects both numbers to be the same. `what` names them.
void expect_equal(std::uint64_t expected, std::uint64_t seen, const std::string& what);

std::string hexadecimal(std::uint64_t number);

/// A text in quotation marks, shortened, or "a null pointer".
std::string quoted(const char* text);

std::vector<rule> error_rules();
std::vector<rule> package_rules();
std::vector<rule> state_rules();

/// Rules for all functions that a single thread can check.
std::vector<rule> common_rules();

/// Runs the checks of `kept` on several threads at once. Throws broken_rule.
void check_on_threads(const zelc& library, const std::vector<rule>& kept);

/// Calls the check of a raw package's state with various arguments.
template <typename Call>
void for_each_state(Call call) {
    constexpr std::uint16_t source_ids[] = {0, 1, 0xFFFF};
    std::vector<std::uint32_t> states{0, 0xFFFFFFFF};
    for (int bit = 0; bit < 32; ++bit)
        states.push_back(std::uint32_t{1} << bit);
    for (const std::uint32_t state : states)
        for (const std::uint16_t source_id : source_ids)
            for (const std::uint32_t nibble : {0U, 5U, 15U})
                call(state, source_id, nibble);
}

} // namespace zelc_check
