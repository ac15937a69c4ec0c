// Decoding from a network interface: the loopback of a network namespace of the test's own, which
// nobody else sends on.

#include <array>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <net/if.h>
#include <netpacket/packet.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include "tests/harness/http_client.hpp"
#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"
#include "tests/harness/running_program.hpp"

namespace rtrange_test {
namespace {

constexpr std::array<std::uint16_t, 1> all_protocols{0x0300}; // ETH_P_ALL, in network order

/// Moves this program into a network namespace with nothing but a loopback interface. Gives whether
/// that is permitted here.
bool enter_network_namespace() {
    const uid_t user = getuid();
    if (unshare(CLONE_NEWNET) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
            return false;
        // Only the namespace's root keeps its rights when a program is started.
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    }
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    const bool up = ioctl(socket, SIOCSIFFLAGS, &request) == 0;
    close(socket);
    return up;
}

/// Puts all frames of a pcap file on the loopback interface.
void send_frames(const fs::path& capture) {
    const int socket = ::socket(AF_PACKET, SOCK_RAW, all_protocols[0]);
    ASSERT_GE(socket, 0);
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_ifindex = static_cast<int>(if_nametoindex("lo"));
    for_each_frame(content(capture), [&](const frame_head&, const std::string& frame) {
        EXPECT_EQ(sendto(socket, frame.data(), frame.size(), 0,
                         reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
                  static_cast<ssize_t>(frame.size()));
    });
    close(socket);
}

/// The columns of a table that do not tell when the frames came in.
std::vector<std::vector<std::string>> values(const fs::path& file) {
    csv_table table(file);
    for (auto& row : table.rows)
        row.erase(row.begin(), row.begin() + 2);
    return table.rows;
}

class live_decoding : public rtrange_program {
protected:
    void SetUp() override {
        if (!enter_network_namespace())
            GTEST_SKIP() << "this system does not permit network namespaces";
        rtrange_program::SetUp();
    }
};

TEST_F(live_decoding, gives_what_a_capture_of_the_same_frames_gives) {
    succeed("decode following.pcap -o capture");
    // All interfaces together have a link layer of their own. Signals that follow the first one
    // closely cost nothing.
    const std::pair<std::vector<int>, std::string> runs[] = {
        {{SIGINT, SIGINT}, "lo"}, {{SIGTERM, SIGHUP, SIGINT}, "any"}, {{SIGHUP}, "lo"}};
    for (const auto& [signals, interface] : runs) {
        running_program program(folder, "decode --interface " + interface + " -o live --overwrite");
        ASSERT_EQ(program.line(), "Decoding frames from " + interface + " until Ctrl-C\n");
        send_frames(example);
        usleep(300'000); // more than the program waits for frames
        for (const int signal : signals) {
            program.signal(signal);
            usleep(5'000);
        }
        const result result = program.end();
        EXPECT_EQ(result.exit_code, 0) << result.output;
        expect_contains(result.output, {"260 frames"});
        EXPECT_EQ(contains(result.output, "260  with a Linux cooked header"), interface == "any");
        for (const char* const table :
             {"hunter.csv", "target1.csv", "rcom.csv", "unidentified.csv"})
            EXPECT_TRUE(values(folder / "live" / table) == values(folder / "capture" / table))
                << table;
    }
}

TEST_F(live_decoding, shows_on_a_page_what_it_writes_into_tables) {
    succeed("decode following.pcap -o capture");
    running_program program(folder, "watch -i lo --listen 127.0.0.1:0 -o live");
    const std::string url = program.line();
    program.line();
    event_reader events(std::atoi(url.c_str() + url.rfind(':') + 1));
    EXPECT_EQ(events.next().second["live"], true);
    page_state page;
    page.take(events.next().second);
    EXPECT_TRUE(page.last["zero_ms"].is_null() || page.last["state"] == "running");
    send_frames(example);
    const auto ranges = [&] { return page.rows[{"target1", "range"}]["time"].size(); };
    // An update comes at least five times a second, also without new rows.
    for (int i = 0; i < 100 && ranges() < 49; ++i)
        page.take(events.next().second);
    EXPECT_GE(ranges(), 49U);
    program.signal(SIGINT);
    const result result = program.end();
    EXPECT_EQ(result.exit_code, 0) << result.output;
    EXPECT_TRUE(values(folder / "live/target1.csv") == values(folder / "capture/target1.csv"));
    EXPECT_NEAR(page.last["now"], page.last["senders"][0]["last"], 5.0);
}

TEST_F(live_decoding, ends_at_its_time_limit) {
    running_program program(folder, "decode -i lo --to 0.2 --as hdf5 -o live.h5");
    program.line();
    send_frames(example);
    usleep(300'000);
    send_frames(example);
    const result result = program.end();
    EXPECT_EQ(result.exit_code, 0) << result.output;
    expect_contains(result.output, {"260 frames", "49 rows"});
}

TEST_F(live_decoding, ends_at_its_time_limit_without_any_frame) {
    const result result = rtrange("decode -i lo --to 0.3");
    EXPECT_EQ(result.exit_code, 1);
    expect_contains(result.output, {"no frame was received on 'lo'"});
}

TEST_F(live_decoding, keeps_what_it_has_written_when_it_cannot_go_on) {
    succeed("simulate long.pcap --duration 10");
    running_program program(folder, "decode -i lo -o live", "trap '' XFSZ; ulimit -f 512; ");
    program.line();
    send_frames(folder / "long.pcap");
    const result result = program.end();
    EXPECT_EQ(result.exit_code, 1);
    expect_contains(result.output, {"cannot write 'live.partial-", "File too large"});
    const std::size_t name = result.output.find("live.partial-");
    const std::string kept = result.output.substr(name, result.output.find('/', name) - name);
    EXPECT_TRUE(fs::exists(folder / kept / "target1.csv")) << kept;
    EXPECT_FALSE(fs::exists(folder / "live"));
}

TEST_F(live_decoding, can_be_ended_at_once_when_its_source_is_silent) {
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::fstream recorder(pipe, std::ios::in | std::ios::out | std::ios::binary);
    running_program program(folder, "decode - -o out < pipe");
    recorder << content(example).substr(0, 4096) << std::flush;
    ASSERT_EQ(program.line(), "Decoding -\n");
    usleep(300'000); // more than it needs for these frames
    program.signal(SIGINT);
    usleep(3'100'000); // longer than signals are ignored
    program.signal(SIGTERM);
    EXPECT_EQ(program.end().exit_code, -1) << "the program was not ended by the signal";
    EXPECT_FALSE(fs::exists(folder / "out"));
}

TEST_F(live_decoding, says_what_it_cannot_capture) {
    expect_contains(rtrange("decode -i nowhere").output,
                    {"rtrange: cannot capture from 'nowhere': No such device"});
    running_program program(folder, "decode -i lo -o none");
    program.line();
    program.signal(SIGINT);
    const result result = program.end();
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.output, "rtrange: no frame was received on 'lo'\n");
}

} // namespace
} // namespace rtrange_test
