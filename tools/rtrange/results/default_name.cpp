#include "tools/rtrange/results/default_name.hpp"

namespace rtrange {

std::filesystem::path default_name(const run_options& run, std::string_view interface_name,
                                   std::string_view extension) {
    std::filesystem::path name = interface_name;
    if (!run.captures.empty())
        name = run.captures.front() == "-" ? "stdin" : run.captures.front().stem();
    // Appended, because the name may have a dot: "eth0.100".
    name += extension;
    return name;
}

} // namespace rtrange
