// Captures in the newer of the two formats.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

namespace rtrange_test {

/// The frames of a little-endian pcap file with nanoseconds, as a pcapng file.
inline std::string as_pcapng(const std::string& pcap) {
    const auto number = [](std::uint32_t value, std::size_t size = 4) {
        return std::string(reinterpret_cast<const char*>(&value), size);
    };
    const auto block = [&](std::uint32_t type, const std::string& body) {
        const std::string size = number(static_cast<std::uint32_t>(body.size() + 12));
        return number(type) + size + body + size;
    };
    const std::string any_length(8, '\xFF');
    const std::string nanoseconds = number(9, 2) + number(1, 2) + number(9) + number(0);
    std::string pcapng = block(0x0A0D0D0A, number(0x1A2B3C4D) + number(1) + any_length) +
                         block(1, number(1) + number(65535) + nanoseconds);
    for (std::size_t at = 24; at < pcap.size();) {
        std::uint32_t head[4]; // seconds, nanoseconds, bytes kept, bytes
        std::memcpy(head, pcap.data() + at, sizeof(head));
        const std::uint64_t time = std::uint64_t{head[0]} * 1'000'000'000 + head[1];
        std::string frame = pcap.substr(at + sizeof(head), head[2]);
        frame.resize((frame.size() + 3) / 4 * 4);
        pcapng += block(6, number(0) + number(static_cast<std::uint32_t>(time >> 32)) +
                               number(static_cast<std::uint32_t>(time)) + number(head[2]) +
                               number(head[3]) + frame);
        at += sizeof(head) + head[2];
    }
    return pcapng;
}

} // namespace rtrange_test
