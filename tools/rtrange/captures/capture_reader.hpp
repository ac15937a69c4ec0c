// Reading of capture files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tools/rtrange/captures/captured_frame.hpp"
#include "tools/rtrange/captures/link_layer.hpp"

struct pcap;
struct pcap_pkthdr;

namespace rtrange {

/// Reads a pcap or pcapng file.
class capture_reader {
public:
    /// Opens the file and reads its first frame, which next() returns later: the file may be a
    /// pipe, which cannot be read twice. Throws failure when the file is not such a capture
    /// or contains frames of a link layer that cannot be read, and compressed_capture.
    explicit capture_reader(const std::filesystem::path& file);

    /// Whether the file has at least one readable frame.
    bool has_frames() const { return first_result_ == 1; }

    /// The time of the first frame in nanoseconds since 1970. Only if there is one.
    std::uint64_t first_time_ns() const { return first_time_ns_; }

    /// The next frame; nothing at the end. Throws broken_capture when the rest cannot be read.
    std::optional<captured_frame> next();

    const std::filesystem::path& path() const { return file_; }

    /// Bytes of the file read so far.
    std::uint64_t position() const;

private:
    struct closer {
        void operator()(pcap* capture) const;
    };

    int read();
    std::uint64_t time_ns() const; ///< of the frame that was read last

    std::filesystem::path file_;
    std::string name_;
    std::unique_ptr<pcap, closer> capture_;
    frame_unwrapper unwrapper_{link_layer::ethernet};
    pcap_pkthdr* header_ = nullptr;
    const std::uint8_t* bytes_ = nullptr;
    int first_result_ = 0; ///< what libpcap returned for the first frame
    bool first_is_next_ = true;
    std::uint64_t first_time_ns_ = 0;
    std::uint64_t frames_ = 0;
};

} // namespace rtrange
