#include "tools/zelc_check/rule.hpp"

#include <cstddef>
#include <cstring>
#include <sstream>

namespace zelc_check {

void expect(bool holds, const std::string& expected, const std::string& seen) {
    if (!holds)
        throw broken_rule(expected, seen);
}

void expect_equal(std::uint64_t expected, std::uint64_t seen, const std::string& what) {
    if (expected != seen)
        throw broken_rule(what + " " + hexadecimal(expected), hexadecimal(seen));
}

std::string hexadecimal(std::uint64_t number) {
    std::ostringstream text;
    text << "0x" << std::uppercase << std::hex << number;
    return text.str();
}

std::string quoted(const char* text) {
    if (text == nullptr)
        return "a null pointer";
    constexpr std::ptrdiff_t shown = 60;
    std::ostringstream result;
    result << '"';
    for (const char* c = text; *c != '\0' && c - text < shown; ++c)
        if (*c >= ' ' && *c <= '~')
            result << *c;
        else
            result << "\\x" << std::hex << int{static_cast<unsigned char>(*c)};
    result << (std::strlen(text) > shown ? "...\"" : "\"");
    return result.str();
}

} // namespace zelc_check
