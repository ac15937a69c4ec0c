#include "tools/rtrange/captures/capture_writer.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fmt/format.h>
#include <pcap/pcap.h>

#include "tools/rtrange/captures/pcap_reason.hpp"
#include "tools/rtrange/failure.hpp"

namespace rtrange {

void capture_writer::closer::operator()(pcap* capture) const {
    pcap_close(capture);
}

void capture_writer::closer::operator()(pcap_dumper* dumper) const {
    pcap_dump_close(dumper);
}

capture_writer::capture_writer(const std::filesystem::path& file)
    : file_(file), capture_(pcap_open_dead_with_tstamp_precision(DLT_EN10MB, 65535,
                                                                 PCAP_TSTAMP_PRECISION_NANO)) {
    dumper_.reset(pcap_dump_open(capture_.get(), file.string().c_str()));
    if (dumper_ == nullptr)
        throw failure(fmt::format("cannot write '{}': {}", file.string(),
                                  without_name(pcap_geterr(capture_.get()), file)));
}

void capture_writer::write(std::uint64_t time_ns, std::span<const std::uint8_t> frame) {
    pcap_pkthdr header{};
    header.ts.tv_sec = static_cast<decltype(header.ts.tv_sec)>(time_ns / 1'000'000'000);
    header.ts.tv_usec = static_cast<decltype(header.ts.tv_usec)>(time_ns % 1'000'000'000);
    header.caplen = static_cast<bpf_u_int32>(frame.size());
    header.len = header.caplen;
    pcap_dump(reinterpret_cast<u_char*>(dumper_.get()), &header, frame.data());
}

void capture_writer::close() {
    const bool flushed = pcap_dump_flush(dumper_.get()) == 0;
    const int reason = errno;
    const bool clean = std::ferror(pcap_dump_file(dumper_.get())) == 0;
    dumper_.reset();
    if (!flushed || !clean)
        throw failure(fmt::format("cannot write '{}': {}", file_.string(), std::strerror(reason)));
}

} // namespace rtrange
