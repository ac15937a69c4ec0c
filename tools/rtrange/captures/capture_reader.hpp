// Network captures, read frame by frame.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

#include "tools/rtrange/captures/captured_frame.hpp"

struct pcap;

namespace rtrange {

/// Reads a pcap or pcapng file of Ethernet frames.
class capture_reader {
public:
    /// Throws failure when the file is no such capture.
    explicit capture_reader(const std::filesystem::path& file);

    /// The next frame; nothing at the end. Throws broken_capture when it is not readable from here
    /// on.
    std::optional<captured_frame> next();

    /// Bytes of the file read so far.
    std::uint64_t position() const;

private:
    struct closer {
        void operator()(pcap* capture) const;
    };

    std::filesystem::path file_;
    std::unique_ptr<pcap, closer> capture_;
    std::uint64_t frames_ = 0;
};

} // namespace rtrange
