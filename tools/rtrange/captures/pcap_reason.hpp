// Error messages of libpcap.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace rtrange {

/// Removes the file name that libpcap puts before some of its messages: the messages of this
/// program contain it already.
inline std::string_view without_name(std::string_view reason, const std::filesystem::path& file) {
    const std::string name = file.string() + ": ";
    if (reason.starts_with(name))
        reason.remove_prefix(name.size());
    return reason;
}

} // namespace rtrange
