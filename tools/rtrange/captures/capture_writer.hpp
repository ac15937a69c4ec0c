// Writing of capture files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

struct pcap;
struct pcap_dumper;

namespace rtrange {

/// Writes a pcap file with nanosecond timestamps.
class capture_writer {
public:
    /// Throws failure when the file cannot be created.
    explicit capture_writer(const std::filesystem::path& file);

    /// Appends one frame; `time_ns` counts nanoseconds since 1970.
    void write(std::uint64_t time_ns, std::span<const std::uint8_t> frame);

    /// Completes the file. Throws failure when anything could not be written.
    void close();

private:
    struct closer {
        void operator()(pcap* capture) const;
        void operator()(pcap_dumper* dumper) const;
    };

    std::filesystem::path file_;
    std::unique_ptr<pcap, closer> capture_;
    std::unique_ptr<pcap_dumper, closer> dumper_;
};

} // namespace rtrange
