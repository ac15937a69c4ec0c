// What libpcap says about failures.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace rtrange {

/// The reason without the file's name, which libpcap puts before some and our own messages name
/// anyway.
inline std::string_view without_name(std::string_view reason, const std::filesystem::path& file) {
    const std::string name = file.string() + ": ";
    if (reason.starts_with(name))
        reason.remove_prefix(name.size());
    return reason;
}

} // namespace rtrange
