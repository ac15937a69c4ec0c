// Network captures, read frame by frame.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

#include "tools/rtrange/captures/captured_frame.hpp"

struct pcap;
struct pcap_pkthdr;

namespace rtrange {

/// Reads a pcap or pcapng file of Ethernet frames.
class capture_reader {
public:
    /// Opens the file, once, and looks for its first frame: a pipe cannot be read again. Throws
    /// failure when the file is no such capture.
    explicit capture_reader(const std::filesystem::path& file);

    /// Whether the first frame can be read.
    bool has_frames() const { return first_result_ == 1; }

    /// The next frame; nothing at the end. Throws broken_capture when it is not readable from here
    /// on.
    std::optional<captured_frame> next();

    const std::filesystem::path& path() const { return file_; }

    /// Bytes of the file read so far.
    std::uint64_t position() const;

private:
    struct closer {
        void operator()(pcap* capture) const;
    };

    int read();

    std::filesystem::path file_;
    std::unique_ptr<pcap, closer> capture_;
    pcap_pkthdr* header_ = nullptr;
    const std::uint8_t* bytes_ = nullptr;
    int first_result_ = 0; ///< of reading, in libpcap's words
    bool first_is_due_ = true;
    std::uint64_t frames_ = 0;
};

} // namespace rtrange
