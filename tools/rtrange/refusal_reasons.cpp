#include "tools/rtrange/refusal_reasons.hpp"

#include <array>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include <fmt/format.h>

namespace rtrange {
namespace {

/// A message with at most three numbers in it, and its meaning, in which they are arguments.
struct reason {
    const char* message; ///< pattern for sscanf
    int numbers;
    const char* meaning; ///< format for fmt
};

constexpr std::array reasons{
    reason{"NCOM structure B is not supported.", 0, "NCOM of structure B; set the unit to A"},
    reason{"Invalid sync byte. Expected = %u, Received = %u.", 2,
           "no NCOM packet: it begins with {1} instead of {0}"},
    reason{"Not valid RCOM sync byte.", 0, "no RCOM packet: it does not begin with 87"},
    reason{"Size of RCOM lane packet is less than %u.", 1,
           "RCOM lane packet that states a length below {0} bytes"},
    reason{"Size of RCOM extended range packet is less than %u.", 1,
           "RCOM extended range packet that states a length below {0} bytes"},
    reason{"Invalid RCOM Target Number.", 0,
           "RCOM extended range packet with a target number above 4"},
    reason{"Invalid RT-Range packet received. packet type = %u", 1,
           "RCOM packet of the unknown type {0}"},
    reason{"Unknown status channel. status channel = %u.", 1, "unknown status channel {0} of RCOM"},
};

/// "Unexpected NCOM frame size (Expected at least = 72, Received size = 40)."
std::string reason_of_size(const std::string& message) {
    constexpr std::string_view begin = "Unexpected ";
    unsigned expected = 0;
    unsigned received = 0;
    const std::size_t numbers = message.find(" (Expected at least = ");
    if (!message.starts_with(begin) || numbers == std::string::npos ||
        std::sscanf(message.c_str() + numbers, " (Expected at least = %u, Received size = %u",
                    &expected, &received) != 2)
        return {};
    const std::string what = message.substr(begin.size(), numbers - begin.size());
    return fmt::format("too short: {} is {} bytes instead of {}", what, received, expected);
}

} // namespace

std::string plain_reason(const std::string& message) {
    std::array<unsigned, 4> n{};
    int end = 0;
    if (std::sscanf(message.c_str(), "Unknown target (IP ' %u.%u.%u.%u ).%n", &n[0], &n[1], &n[2],
                    &n[3], &end) == 4)
        return fmt::format("wrapped NCOM: the target's address {}.{}.{}.{} is not known yet", n[0],
                           n[1], n[2], n[3]);
    if (std::string text = reason_of_size(message); !text.empty())
        return text;
    for (const reason& known : reasons) {
        const std::string_view pattern(known.message);
        const std::string_view fixed = pattern.substr(0, pattern.find('%'));
        if (message.starts_with(fixed) &&
            (known.numbers == 0 ||
             std::sscanf(message.c_str(), known.message, &n[0], &n[1]) == known.numbers))
            return fmt::format(fmt::runtime(known.meaning), n[0], n[1]);
    }
    return message;
}

} // namespace rtrange
