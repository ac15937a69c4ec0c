#include "tools/rtrange/captures/capture_reader.hpp"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

#include <fmt/format.h>
#include <pcap/pcap.h>

#include "tools/rtrange/captures/compressed_capture.hpp"
#include "tools/rtrange/captures/pcap_link_layer.hpp"
#include "tools/rtrange/captures/pcap_reason.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"

namespace rtrange {

namespace {

/// Throws failure, with the number of the link type, when its frames cannot be read.
link_layer readable_link_layer(pcap* capture, const std::filesystem::path& file) {
    if (const auto layer = link_layer_of(capture))
        return *layer;
    const int link_type = pcap_datalink(capture);
    const char* const name = pcap_datalink_val_to_name(link_type);
    throw failure(fmt::format(
        "'{}' contains frames of link type {}, not Ethernet; record on an Ethernet interface",
        file.string(), name != nullptr ? name : std::to_string(link_type)));
}

/// libpcap reads a pcapng file only if its interfaces are alike. Gives how they differ and what to
/// do if they are not; empty for other faults.
std::string_view difference_of_interfaces(std::string_view reason) {
    if (reason.find("different from the type of the first interface") != std::string_view::npos)
        return "its interfaces have different link types; record each interface into a file of its "
               "own";
    if (reason.find("different from the snapshot length of") != std::string_view::npos)
        return "its interfaces have different snapshot lengths; convert the file to pcap with "
               "'editcap -F pcap'";
    return "";
}

} // namespace

void capture_reader::closer::operator()(pcap* capture) const {
    pcap_close(capture);
}

capture_reader::capture_reader(const std::filesystem::path& file)
    : file_(file), name_(file.filename().string()) {
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored))
        throw failure(fmt::format("'{}' is a folder; give a capture file", file.string()));
    if (std::filesystem::is_regular_file(file, ignored) &&
        std::filesystem::file_size(file, ignored) == 0)
        throw failure(fmt::format("'{}' is empty; record it again", file.string()));

    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    capture_.reset(pcap_open_offline_with_tstamp_precision(
        file.string().c_str(), PCAP_TSTAMP_PRECISION_NANO, reason.data()));
    if (capture_ == nullptr) {
        // A pipe cannot be read twice.
        if (std::filesystem::is_regular_file(file, ignored))
            check_not_compressed(file);
        throw failure(fmt::format("cannot read '{}' as a pcap or pcapng capture: {}", file.string(),
                                  without_name(reason.data(), file)));
    }
    unwrapper_ = frame_unwrapper(readable_link_layer(capture_.get(), file));
    first_result_ = read();
    if (has_frames())
        first_time_ns_ = time_ns();
}

int capture_reader::read() {
    return pcap_next_ex(capture_.get(), &header_, &bytes_);
}

std::uint64_t capture_reader::time_ns() const {
    using seconds_type = decltype(header_->ts.tv_sec);
    // With nanosecond precision, tv_usec counts nanoseconds.
    const auto seconds =
        std::uint64_t{static_cast<std::make_unsigned_t<seconds_type>>(header_->ts.tv_sec)};
    const auto nanoseconds = static_cast<std::uint64_t>(header_->ts.tv_usec);
    return seconds * 1'000'000'000 + nanoseconds;
}

std::optional<captured_frame> capture_reader::next() {
    const int result = std::exchange(first_is_next_, false) ? first_result_ : read();
    if (result == PCAP_ERROR_BREAK)
        return std::nullopt;
    if (result != 1) {
        const char* const reason = pcap_geterr(capture_.get());
        const std::string_view difference = difference_of_interfaces(reason);
        if (difference.empty())
            throw broken_capture(
                fmt::format("'{}' is broken after frame {}: {}", file_.string(), frames_, reason));
        throw broken_capture(fmt::format("'{}' cannot be read{}: {}", file_.string(),
                                         frames_ > 0 ? fmt::format(" after frame {}", frames_) : "",
                                         difference));
    }
    ++frames_;
    using seconds_type = decltype(header_->ts.tv_sec);
    // 32-bit seconds are unsigned and reach beyond 2038.
    if (sizeof(seconds_type) == 8 && header_->ts.tv_sec < 0)
        throw broken_capture(
            fmt::format("frame {} of '{}' has a time before 1970; set the clock of the recorder",
                        frames_, file_.string()));
    return unwrapper_.unwrap({time_ns(),
                              {bytes_, header_->caplen},
                              header_->caplen < header_->len,
                              frames_,
                              name_.c_str()});
}

std::uint64_t capture_reader::position() const {
    const std::int64_t position = position_in(pcap_file(capture_.get()));
    return position > 0 ? static_cast<std::uint64_t>(position) : 0;
}

} // namespace rtrange
