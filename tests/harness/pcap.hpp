// Little-endian pcap files with nanoseconds, as the program writes them.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>

namespace rtrange_test {

inline constexpr std::size_t pcap_header_size = 24;

/// What stands before each frame.
struct frame_head {
    std::uint32_t seconds, nanoseconds, kept_length, length;
};

/// The bytes of a number, or of another plain value.
template <typename T>
std::string raw(const T& value) {
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

inline void for_each_frame(
    const std::string& pcap,
    const std::function<void(const frame_head& head, const std::string& frame)>& action) {
    for (std::size_t at = pcap_header_size; at < pcap.size();) {
        frame_head head;
        std::memcpy(&head, pcap.data() + at, sizeof(head));
        at += sizeof(head);
        action(head, pcap.substr(at, head.kept_length));
        at += head.kept_length;
    }
}

/// The same frames, some seconds later.
inline std::string delayed(const std::string& pcap, std::uint32_t seconds) {
    std::string result = pcap.substr(0, pcap_header_size);
    for_each_frame(pcap, [&](frame_head head, const std::string& frame) {
        head.seconds += seconds;
        result += raw(head) + frame;
    });
    return result;
}

/// The frames of two captures, one after the other.
inline std::string joined(const std::string& first, const std::string& second) {
    return first + second.substr(pcap_header_size);
}

/// The same frames in the newer of the two formats.
inline std::string as_pcapng(const std::string& pcap) {
    const auto block = [&](std::uint32_t type, const std::string& body) {
        const auto size = static_cast<std::uint32_t>(body.size() + 12);
        return raw(type) + raw(size) + body + raw(size);
    };
    constexpr std::uint16_t nanoseconds[]{9, 1, 9, 0, 0, 0}; // an option, and the end of options
    std::string pcapng = block(0x0A0D0D0A, raw(0x1A2B3C4D) + raw(1) + std::string(8, '\xFF')) +
                         block(1, raw(1) + raw(65535) + raw(nanoseconds));
    for_each_frame(pcap, [&](const frame_head& head, std::string frame) {
        const std::uint64_t time = std::uint64_t{head.seconds} * 1'000'000'000 + head.nanoseconds;
        frame.resize((frame.size() + 3) / 4 * 4);
        pcapng += block(6, raw(0) + raw(static_cast<std::uint32_t>(time >> 32)) +
                               raw(static_cast<std::uint32_t>(time)) + raw(head.kept_length) +
                               raw(head.length) + frame);
    });
    return pcapng;
}

} // namespace rtrange_test
