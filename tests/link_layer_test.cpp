// Captures that were not recorded as plain Ethernet: the tables must be those of the same frames
// with an Ethernet header.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

using rewriting = std::function<std::string(std::size_t index, const std::string& frame)>;

/// The same capture with each frame rewritten and another link type.
std::string rewritten(const std::string& pcap, std::uint32_t link_type, const rewriting& rewrite) {
    std::string result = pcap.substr(0, 20) + raw(link_type);
    std::size_t index = 0;
    for_each_frame(pcap, [&](frame_head head, const std::string& frame) {
        const std::string bytes = rewrite(index++, frame);
        head.length += static_cast<std::uint32_t>(bytes.size() - frame.size());
        head.kept_length = static_cast<std::uint32_t>(bytes.size());
        result += raw(head) + bytes;
    });
    return result;
}

/// Keeps the beginning of each frame only.
std::string shortened(const std::string& pcap,
                      const std::function<std::size_t(std::size_t index)>& kept_size) {
    std::string result = pcap.substr(0, pcap_header_size);
    std::size_t index = 0;
    for_each_frame(pcap, [&](frame_head head, const std::string& frame) {
        const std::string bytes = frame.substr(0, kept_size(index++));
        head.kept_length = static_cast<std::uint32_t>(bytes.size());
        result += raw(head) + bytes;
    });
    return result;
}

std::string text(const char* bytes, std::size_t size) {
    return {bytes, size};
}

/// A way to capture frames: the link type, the size of all that stands in place of the 14 bytes of
/// an Ethernet header, the lines of the summary, and how to make it of an Ethernet frame.
struct layer {
    const char* name;
    std::uint32_t link_type;
    std::size_t header_size;
    std::vector<std::string> summary;
    std::function<std::string(const std::string& frame)> make;
};

std::string cooked(const std::string& frame, const std::string& from_protocol) {
    // Multicast, Ethernet hardware, an address of 6 bytes in a field of 8.
    return text("\0\2\0\1\0\6", 6) + frame.substr(6, 6) + text("\0\0", 2) + from_protocol;
}

std::string cooked_2(const std::string& frame) {
    // Protocol, reserved, interface 3, Ethernet hardware, multicast, 6 bytes in a field of 8.
    return frame.substr(12, 2) + text("\0\0\0\0\0\3\0\1\2\6", 10) + frame.substr(6, 6) +
           text("\0\0", 2) + frame.substr(14);
}

layer tagged(const char* name, const std::string& tags) {
    return {name, 1, 14 + tags.size(), {"260  with a VLAN tag"}, [tags](const std::string& frame) {
                return frame.substr(0, 12) + tags + frame.substr(12);
            }};
}

layer raw_ip(const char* name, std::uint32_t link_type) {
    return {name,
            link_type,
            0,
            {"260  without an Ethernet header (raw IP)"},
            [](const std::string& frame) { return frame.substr(14); }};
}

std::vector<layer> layers() {
    const std::string cooked_line = "260  with a Linux cooked header";
    const std::string tag = text("\x81\x00\x00\x64", 4);
    return {
        tagged("802.1Q", tag),
        tagged("802.1ad", text("\x88\xA8\x2F\xFF", 4) + tag),
        tagged("9100", text("\x91\x00\x81\x00", 4) + tag),
        {"cooked", 113, 16, {cooked_line}, [](const auto& f) { return cooked(f, f.substr(12)); }},
        {"tagged_cooked",
         113,
         20,
         {cooked_line, "260  with a VLAN tag"},
         [tag](const auto& frame) { return cooked(frame, tag + frame.substr(12)); }},
        {"cooked_2", 276, 20, {cooked_line}, cooked_2},
        raw_ip("raw", 101),
        raw_ip("raw_12", 12),
        raw_ip("raw_14", 14),
        raw_ip("ipv4", 228),
    };
}

/// The example, in which every tenth packet is damaged.
std::string damaged_example() {
    return rewritten(content(example), 1, [](std::size_t index, std::string frame) {
        if (index % 10 == 5)
            frame[42] = '\x55'; // the first byte of a datagram
        return frame;
    });
}

class link_layer : public rtrange_program {
protected:
    /// Decodes a capture in a folder of its own, so that its name, which is in the tables, is
    /// always the same. Gives the summary.
    std::string decode(const std::string& name, const std::string& pcap) const {
        fs::create_directories(folder / name);
        write(folder / name / "run.pcap", pcap);
        const std::string file = name + "/run.pcap";
        return succeed("decode " + file + " --samples -o " + name + "/out");
    }

    void expect_same_tables(const std::string& name, const std::string& other) const {
        const auto names = names_in(folder / other / "out");
        EXPECT_EQ(names_in(folder / name / "out"), names);
        for (const std::string& file : names)
            if (file.ends_with(".csv")) {
                EXPECT_TRUE(content(folder / name / "out" / file) ==
                            content(folder / other / "out" / file))
                    << file;
            }
    }
};

TEST_F(link_layer, does_not_change_the_tables) {
    const std::string plain = damaged_example();
    const std::string summary = decode("plain", plain);
    expect_contains(summary, {"1  foreign: not IPv4", "1  foreign: other UDP ports"});
    EXPECT_FALSE(contains(summary, "  with"));
    EXPECT_EQ(csv_table(folder / "plain/out/refused.csv").rows.size(), 25U); // one is foreign
    // The lines that count frames.
    const std::size_t begin = summary.find("260 frames"), end = summary.find("\nUnits");
    const auto lines = split(summary.substr(begin, end - begin), '\n');
    for (const layer& layer : layers()) {
        SCOPED_TRACE(layer.name);
        const std::string output =
            decode(layer.name, rewritten(plain, layer.link_type, [&](std::size_t, const auto& f) {
                       return layer.make(f);
                   }));
        expect_contains(output, lines);
        expect_contains(output, layer.summary);
        expect_same_tables(layer.name, "plain");
    }
}

TEST_F(link_layer, may_differ_from_frame_to_frame) {
    const std::string plain = damaged_example();
    decode("plain", plain);
    const layer tag = layers().front();
    const auto tag_some = [&](std::size_t index, const std::string& frame) {
        return index % 3 == 0 ? tag.make(frame) : frame;
    };
    expect_contains(decode("mixed", rewritten(plain, 1, tag_some)),
                    {"87  with a VLAN tag", "1  foreign: not IPv4"});
    expect_same_tables("mixed", "plain");
}

TEST_F(link_layer, is_told_from_frames_that_were_cut) {
    // Every third frame is cut, at any place of it.
    const auto kept = [](std::size_t header_size) {
        return [=](std::size_t index) {
            return index % 3 == 0 ? header_size + index / 3 : std::string::npos;
        };
    };
    const std::string plain = content(example);
    const auto line_about_cuts = [](const std::string& summary) {
        const std::size_t line = summary.find("cut short");
        return summary.substr(summary.rfind('\n', line), 12);
    };
    const std::string summary = decode("plain", shortened(plain, kept(14)));
    EXPECT_GT(csv_table(folder / "plain/out/refused.csv").rows.size(), 40U);
    for (const layer& layer : layers()) {
        SCOPED_TRACE(layer.name);
        const std::string whole = rewritten(
            plain, layer.link_type, [&](std::size_t, const auto& f) { return layer.make(f); });
        if (layer.header_size > 0) {
            EXPECT_EQ(
                line_about_cuts(decode(layer.name, shortened(whole, kept(layer.header_size)))),
                line_about_cuts(summary));
            expect_same_tables(layer.name, "plain");
        }

        // Of the first frames, not even the headers are complete.
        const std::string name = std::string(layer.name) + "_header";
        decode(name, shortened(whole, [&](std::size_t index) {
                   return index < std::max<std::size_t>(layer.header_size, 1) ? index
                                                                              : std::string::npos;
               }));
        const csv_table refused(folder / name / "out/refused.csv");
        for (std::size_t row = 0; row < std::max<std::size_t>(layer.header_size, 1); ++row) {
            EXPECT_EQ(refused.cell(row, "frame"), std::to_string(row + 1));
            EXPECT_EQ(refused.cell(row, "source_ip"), "");
            EXPECT_TRUE(contains(refused.cell(row, "reason"), "too short"));
        }
    }
}

TEST_F(link_layer, is_refused_by_name_if_it_is_another_one) {
    const auto keep = [](std::size_t, const std::string& frame) { return frame; };
    for (const auto& [type, name] : {std::pair{0U, "NULL"}, {105U, "IEEE802_11"}, {229U, "IPV6"}}) {
        write(folder / "other.pcap", rewritten(content(example), type, keep));
        const result result = rtrange("decode other.pcap");
        EXPECT_EQ(result.exit_code, 1);
        expect_contains(result.output, {std::string("link type ") + name + ", not Ethernet"});
    }

    // A second interface, with another link layer, and with frames of another length.
    const auto interface = [](std::uint32_t link_type, std::uint32_t length) {
        return raw(1U) + raw(20U) + raw(link_type) + raw(length) + raw(20U);
    };
    for (const auto& [block, remedy] :
         {std::pair{interface(113, 65535),
                    "different link types; record each interface into a file of its own"},
          {interface(1, 99),
           "different snapshot lengths; convert the file to pcap with 'editcap -F pcap'"}}) {
        write(folder / "two.pcapng", as_pcapng(content(example)) + block);
        const result result = rtrange("decode two.pcapng -o two --overwrite");
        EXPECT_EQ(result.exit_code, 1);
        expect_contains(result.output, {"258  decoded", "'two.pcapng' cannot be read after frame",
                                        "260: its interfaces have ", remedy});
        write(folder / "two.pcapng",
              as_pcapng(content(example).substr(0, pcap_header_size)) + block);
        expect_contains(rtrange("decode two.pcapng").output,
                        {"'two.pcapng' cannot be read: its interfaces have ", remedy});
    }
}

TEST_F(link_layer, of_a_compressed_capture_comes_after_the_command_that_reads_it) {
    succeed("decode following.pcap -o plain");
    const std::string reads = "read it with: ";
    const std::string file = "\"hunter's run.pcap\""; // without the usual extension
    const std::string enter = "cd " + folder.string() + " && ";
    for (const std::string packer : {"gzip", "xz", "bzip2", "zstd"}) {
        SCOPED_TRACE(packer);
        std::string pack = enter + packer;
        pack += " -c < following.pcap > ";
        ASSERT_EQ(run(pack += file).exit_code, 0);
        for (const auto& [command, written] :
             {std::pair<std::string, std::string>{"decode ", "hunter's run/target1.csv"},
              {"report ", "hunter's run.html"}}) {
            const result refused = rtrange(command + file);
            EXPECT_EQ(refused.exit_code, 1);
            expect_contains(refused.output, {"is compressed with " + packer, reads});
            std::string line = refused.output.substr(refused.output.find(reads) + reads.size());
            line.replace(line.find("rtrange "), 7, program());
            line.replace(line.find('\n'), 1, " --overwrite");
            const result decoded = run(enter + line);
            EXPECT_EQ(decoded.exit_code, 0) << line << "\n" << decoded.output;
            EXPECT_TRUE(fs::exists(folder / written)) << line;
        }
        EXPECT_EQ(content(folder / "hunter's run/target1.csv"),
                  content(folder / "plain/target1.csv"));
    }
}

} // namespace
} // namespace rtrange_test
