#include "tools/rtrange/captures/live_capture.hpp"

#include <array>
#include <chrono>
#include <thread>

#include <fmt/format.h>
#include <pcap/pcap.h>

#include "tools/rtrange/captures/pcap_link_layer.hpp"
#include "tools/rtrange/failure.hpp"

namespace rtrange {
namespace {

constexpr int whole_frame = 65535;
constexpr int wait_ms = 10;
constexpr int buffer_size = 16 << 20; // 16 MiB

} // namespace

void live_capture::closer::operator()(pcap* capture) const {
    pcap_close(capture);
}

live_capture::live_capture(const std::string& name) : interface_(name) {
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    capture_.reset(pcap_create(name.c_str(), reason.data()));
    if (capture_ == nullptr)
        throw failure(fmt::format("cannot capture from '{}': {}", name, reason.data()));
    pcap* const capture = capture_.get();
    pcap_set_snaplen(capture, whole_frame);
    pcap_set_promisc(capture, 1);
    pcap_set_timeout(capture, wait_ms);
    pcap_set_buffer_size(capture, buffer_size);
    if (pcap_set_tstamp_precision(capture, PCAP_TSTAMP_PRECISION_NANO) == 0)
        nanoseconds_per_tick_ = 1;
    const int result = pcap_activate(capture);
    if (result == PCAP_ERROR_PERM_DENIED)
        throw failure(fmt::format("no permission to capture from '{}'; run rtrange as root", name));
    if (result < 0)
        throw failure(
            fmt::format("cannot capture from '{}': {}", name,
                        result == PCAP_ERROR ? pcap_geterr(capture) : pcap_statustostr(result)));
    const auto layer = link_layer_of(capture);
    if (!layer)
        throw failure(fmt::format("'{}' is not an Ethernet interface; choose another one", name));
    unwrapper_ = frame_unwrapper(*layer);
    if (pcap_setnonblock(capture, 1, reason.data()) != 0)
        throw failure(fmt::format("cannot capture from '{}': {}", name, reason.data()));
}

std::optional<captured_frame> live_capture::next() {
    pcap_pkthdr* header = nullptr;
    const u_char* bytes = nullptr;
    const int result = pcap_next_ex(capture_.get(), &header, &bytes);
    if (result == 0) {
        // A blocking read would not return while there is no traffic, not even for Ctrl-C.
        std::this_thread::sleep_for(std::chrono::milliseconds(wait_ms));
        return std::nullopt;
    }
    if (result != 1)
        throw broken_capture(
            fmt::format("capturing from '{}' failed: {}", interface_, pcap_geterr(capture_.get())));
    const auto seconds = static_cast<std::uint64_t>(header->ts.tv_sec);
    const auto ticks = static_cast<std::uint64_t>(header->ts.tv_usec);
    ++frames_;
    return unwrapper_.unwrap({seconds * 1'000'000'000 + ticks * nanoseconds_per_tick_,
                              {bytes, header->caplen},
                              header->caplen < header->len,
                              frames_,
                              interface_.c_str()});
}

std::uint64_t live_capture::lost() const {
    pcap_stat counts{};
    return pcap_stats(capture_.get(), &counts) == 0 ? counts.ps_drop : 0;
}

} // namespace rtrange
