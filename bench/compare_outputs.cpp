// Checks that two builds of the plug-in produce identical output: both get the same random raw
// packages, and all packages, log records and failures are compared.
// usage: compare_outputs PLUG-IN PLUG-IN [FRAMES [SEED]]

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <span>
#include <string>
#include <string_view>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "simulation/ethernet_frame.hpp"

namespace {

using namespace zel;
using simulation::bytes;

constexpr std::uint16_t ncom_port = 3000;
constexpr std::uint16_t rcom_port = 3003;
constexpr std::uint8_t ext_range = 2;

/// Random traffic that reaches every path of the decoder: mostly valid packets of a few senders
/// with random values, and some frames that are foreign, truncated, altered or out of order.
class random_traffic {
public:
    explicit random_traffic(std::uint64_t seed) : random_(seed) {}

    void next(std::string_view format, host::raw_package_buffer& raw) {
        wrap(format, frame(), raw);
        zel_raw_package_t& package = raw.package();
        package.source_id = static_cast<std::uint16_t>(random_());
        package.source_info = static_cast<std::uint16_t>(random_());
        package.state_value = one_in(500) ? 1 : 0;
        fill(package.pass_through_block);
        time_ += below(20);
        if (one_in(5000)) // a step back resets the decoder
            time_ -= std::min<std::uint64_t>(time_, 1 + below(1000));
        package.reference_timestamp = time_;
    }

private:
    std::uint64_t below(std::uint64_t bound) { return random_() % bound; }
    bool one_in(std::uint64_t n) { return below(n) == 0; }
    std::uint8_t byte() { return static_cast<std::uint8_t>(random_()); }
    void fill(std::span<std::uint8_t> part) {
        std::ranges::generate(part, [this] { return byte(); });
    }
    bytes random_bytes(std::size_t size) {
        bytes result(size);
        fill(result);
        return result;
    }
    simulation::ip_address address() {
        return {195, 0, 0, static_cast<std::uint8_t>(20 + below(one_in(50) ? 9 : 5))};
    }

    /// Sets a little-endian field to a random value close to zero.
    void shrink(bytes& packet, std::size_t offset, std::size_t size) {
        constexpr int largest = 1500;
        const int value = static_cast<int>(below(2 * largest + 1)) - largest;
        for (std::size_t i = 0; i < size; ++i)
            packet[offset + i] =
                static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> 8 * i);
    }

    bytes ncom() {
        bytes packet = random_bytes(72);
        packet[0] = one_in(100) ? byte() : 0xE7;
        packet[21] = static_cast<std::uint8_t>(below(one_in(20) ? 12 : 11));
        if (one_in(2)) { // a heading that the filter may accept
            shrink(packet, 52, 3);
            packet[53] = static_cast<std::uint8_t>(packet[53] & 0x7F);
            packet[54] = static_cast<std::uint8_t>(below(2));
        }
        if (!one_in(20))
            packet[62] = static_cast<std::uint8_t>(one_in(8) ? 75 + below(3) : below(27));
        return packet;
    }

    bytes rcom(std::uint8_t type, std::size_t size) {
        bytes packet = random_bytes(size);
        packet[0] = one_in(100) ? byte() : 0x57;
        packet[1] = type;
        packet[2] = static_cast<std::uint8_t>(one_in(50) ? below(size) : size);
        packet[3] = 0;
        return packet;
    }

    bytes extended_range() {
        bytes packet = rcom(ext_range, 65);
        if (!one_in(50))
            packet[6] = static_cast<std::uint8_t>(below(5));
        if (!one_in(5))
            for (const std::size_t word : {12U, 16U, 18U, 54U, 56U})
                shrink(packet, word, word == 12 ? 4 : 2);
        if (!one_in(50))
            packet[41] = static_cast<std::uint8_t>(below(22));
        constexpr std::uint8_t names_addresses = 9;
        if (packet[41] == names_addresses) {
            std::ranges::copy(address(), packet.begin() + 42);
            std::ranges::copy(address(), packet.begin() + 46);
        }
        return packet;
    }

    bytes lane() {
        bytes packet = rcom(1, 133);
        if (!one_in(20))
            packet[49] = static_cast<std::uint8_t>(below(17));
        return packet;
    }

    bytes wrapped_ncom() {
        bytes packet = rcom(3, 20);
        std::ranges::copy(address(), packet.begin() + 4);
        if (!one_in(50))
            std::fill(packet.begin() + 8, packet.begin() + 12, std::uint8_t{0});
        const bytes inner = ncom();
        packet.insert(packet.end(), inner.begin(), inner.end());
        return packet;
    }

    bytes datagram(std::uint16_t port, const bytes& payload) {
        return simulation::udp_frame({address(), 3000}, {{195, 0, 0, 255}, port}, payload);
    }

    bytes sound_frame() {
        switch (below(10)) {
        case 0:
            return datagram(one_in(2) ? 5353 : static_cast<std::uint16_t>(random_()),
                            random_bytes(below(200)));
        case 1:
            return datagram(rcom_port, lane());
        case 2:
        case 3:
            return datagram(rcom_port, wrapped_ncom());
        case 4:
        case 5:
            return datagram(rcom_port, extended_range());
        default:
            return datagram(ncom_port, ncom());
        }
    }

    bytes frame() {
        bytes result = sound_frame();
        if (one_in(10))
            result.resize(below(result.size() + 40)); // padded or truncated
        if (!result.empty() && one_in(20))
            result[below(result.size())] = byte();
        return result;
    }

    void wrap(std::string_view format, const bytes& frame, host::raw_package_buffer& raw) {
        if (format == host::ethernet_frame_type) {
            host::wrap_ethernet_frame(frame, raw);
        } else {
            host::wrap_recorder_frame(frame, raw);
            if (one_in(100)) // the mark of a corrupt frame
                std::memset(&raw.package() + 1, 0, 4);
        }
        if (one_in(500))
            raw.package().size = below(raw.package().size);
    }

    std::mt19937_64 random_;
    std::uint64_t time_ = 0;
};

/// One build of the plug-in, with its output as one string.
class candidate {
public:
    candidate(const char* file, std::string_view format)
        : plugin_(file), services_([this](const zel_log_info_t& record) { note(record); }),
          instance_(plugin_.formatter(format), services_) {}

    const std::string& answer(const zel_raw_package_t& raw) {
        answer_.clear();
        try {
            const host::package_array packages = instance_.transform(raw);
            package_count += packages.size();
            for (const zel_package_t* const package : packages)
                answer_.append(reinterpret_cast<const char*>(package),
                               sizeof(*package) + package->size);
        } catch (const host::host_error& error) {
            answer_ += std::to_string(error.status()) + error.what();
        }
        return answer_;
    }

    std::uint64_t package_count = 0;
    std::uint64_t record_count = 0;

private:
    void note(const zel_log_info_t& record) {
        ++record_count;
        for (const char* const text : {record.message, record.module, record.file, record.function})
            answer_.append(text).push_back('\n');
        answer_ += std::to_string(record.level) + '\n';
        // Only the dispatcher's lines are fixed; the others move with the code.
        if (std::string_view(record.file) == "rt_range_formatter_base.cpp")
            answer_ += std::to_string(record.line) + '\n';
    }

    host::plugin plugin_;
    host::host_services services_;
    host::formatter_instance instance_;
    std::string answer_;
};

bool agree(const char* file_a, const char* file_b, std::string_view format, std::uint64_t frames,
           std::uint64_t seed) {
    candidate a(file_a, format);
    candidate b(file_b, format);
    random_traffic traffic(seed);
    host::raw_package_buffer raw;
    for (std::uint64_t i = 0; i < frames; ++i) {
        traffic.next(format, raw);
        const std::string& answer = a.answer(raw.package());
        if (answer != b.answer(raw.package())) {
            std::printf("%s: the output for frame %llu differs\n", format.data(),
                        static_cast<unsigned long long>(i));
            return false;
        }
    }
    std::printf("%s: %llu frames, %llu packages and %llu log records are identical\n",
                format.data(), static_cast<unsigned long long>(frames),
                static_cast<unsigned long long>(a.package_count),
                static_cast<unsigned long long>(a.record_count));
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: compare_outputs PLUG-IN PLUG-IN [FRAMES [SEED]]\n");
        return 2;
    }
    const std::uint64_t frames = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1'000'000;
    const std::uint64_t seed = argc > 4 ? std::strtoull(argv[4], nullptr, 10) : 1;
    bool alike = true;
    for (const auto format : {host::recorder_frame_type, host::ethernet_frame_type})
        alike = agree(argv[1], argv[2], format, frames, seed) && alike;
    return alike ? 0 : 1;
}
