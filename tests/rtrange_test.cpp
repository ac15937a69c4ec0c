// The program, as a user calls it.

#include "simulation/scenario.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {

TEST_F(rtrange_program, writes_a_row_per_package_with_the_values_of_the_run) {
    using namespace zel::simulation;
    const result result = rtrange("decode " + example.string() + " -o " + in_folder("out"));
    ASSERT_EQ(result.exit_code, 0) << result.output;
    const csv_table hunter(folder / "out/hunter.csv");
    const csv_table target(folder / "out/target2.csv");
    const csv_table rcom(folder / "out/rcom.csv");

    // 50 ticks: the targets' NCOM begins with the second one, and every fourth comes wrapped.
    EXPECT_EQ(hunter.rows.size(), 50U);
    EXPECT_EQ(target.rows.size(), 99U);
    EXPECT_EQ(target.count("source", "ncom"), 37U);
    EXPECT_EQ(target.count("source", "rcom"), 62U);
    EXPECT_EQ(rcom.rows.size(), 2U * 50 + 2 * 12 + 10);
    EXPECT_FALSE(fs::exists(folder / "out/target3.csv"));
    for (const char* const line :
         {"260 frames", "258  decoded", "1  foreign: not IPv4", "1  foreign: other UDP ports",
          "hunter (195.0.0.10)", "target 1 (195.0.0.21)", "target 2 (195.0.0.22)", "50 rows"})
        EXPECT_TRUE(contains(result.output, line)) << line << "\n" << result.output;

    EXPECT_EQ(hunter.cell(0, "reference_timestamp"), "1767607200000000000");
    EXPECT_EQ(hunter.cell(0, "source"), "ncom");
    EXPECT_EQ(hunter.cell(0, "source_ip"), "195.0.0.10");
    EXPECT_EQ(rcom.cell(0, "target_address"), "195.0.0.21");
    EXPECT_EQ(rcom.cell(1, "target_address"), "195.0.0.22");
    const scenario scenario(1, 2);
    for (std::size_t tick = 2; tick < 50; ++tick)
        EXPECT_NEAR(hunter.number(tick, "velocity_north"),
                    scenario.unit(0, static_cast<double>(tick) / 50).velocity_north, 0.51e-4);
    EXPECT_NEAR(target.number(98, "range_longitudinal"),
                scenario.target(2, 49.0 / 50).range_longitudinal, 0.51e-3);
}

TEST_F(rtrange_program, decodes_the_same_from_either_wrapping_and_over_several_captures) {
    rtrange("decode " + example.string() + " -o " + in_folder("a"));
    rtrange("decode " + example.string() + " --format zel.eth.rtrange -o " + in_folder("b"));
    EXPECT_EQ(content(folder / "a/target1.csv"), content(folder / "b/target1.csv"));
    // Time runs backwards between the two, so that the second is decoded like the first.
    const result twice =
        rtrange("decode " + example.string() + " " + example.string() + " -o " + in_folder("c"));
    EXPECT_EQ(twice.exit_code, 0);
    const csv_table once(folder / "a/hunter.csv");
    const csv_table both(folder / "c/hunter.csv");
    ASSERT_EQ(both.rows.size(), 2 * once.rows.size());
    EXPECT_TRUE(std::equal(once.rows.begin(), once.rows.end(),
                           both.rows.begin() + static_cast<std::ptrdiff_t>(once.rows.size())));
}

TEST_F(rtrange_program, keeps_what_came_before_a_truncated_end) {
    const std::string capture = content(example);
    write(folder / "cut.pcap", capture.substr(0, capture.size() / 2));
    const result result = rtrange("decode " + in_folder("cut.pcap") + " -o " + in_folder("out"));
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_TRUE(contains(result.output, "is broken after frame")) << result.output;
    EXPECT_TRUE(contains(result.output, "decoded"));
    EXPECT_GT(content(folder / "out/hunter.csv").size(), 1000U);
}

TEST_F(rtrange_program, goes_on_with_the_next_capture_after_a_broken_one) {
    const std::string capture = content(example);
    write(folder / "cut.pcap", capture.substr(0, capture.size() - 1));
    const result result = rtrange("decode " + in_folder("cut.pcap") + " " + example.string() +
                                  " -o " + in_folder("out"));
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_TRUE(contains(result.output, "cut.pcap' is broken after frame 259")) << result.output;
    EXPECT_TRUE(contains(result.output, "519 frames")) << result.output;
    EXPECT_TRUE(contains(result.output, "1  steps back in time, the first at 2026-01-05 10:00:00"));
}

TEST_F(rtrange_program, does_not_take_late_foreign_traffic_for_a_step_back_in_time) {
    std::string capture = content(example);
    const std::size_t arp = capture.find(std::string("\x08\x06", 2) + std::string(20, '\0'));
    ASSERT_NE(arp, std::string::npos);
    capture[arp - 12 - 16] = 0; // its time in seconds, before the frame's two addresses
    write(folder / "late.pcap", capture);
    const result result = rtrange("decode " + in_folder("late.pcap") + " -o " + in_folder("out"));
    EXPECT_TRUE(contains(result.output, "258  decoded")) << result.output;
    EXPECT_FALSE(contains(result.output, "steps back")) << result.output;
}

TEST_F(rtrange_program, says_that_frames_were_cut_short_by_the_recorder) {
    // In the file, each frame stands behind 16 bytes: its time, its kept and its whole length.
    std::string capture = content(example).substr(0, 24);
    const std::string whole = content(example);
    for (std::size_t at = 24; at < whole.size();) {
        const auto size = static_cast<unsigned char>(whole[at + 8]);
        std::string head = whole.substr(at, 16);
        head[8] = static_cast<char>(std::min<int>(size, 60));
        capture += head + whole.substr(at + 16, std::min<std::size_t>(size, 60));
        at += 16 + std::size_t{size};
    }
    write(folder / "short.pcap", capture);
    const result result = rtrange("decode " + in_folder("short.pcap") + " -o " + in_folder("out"));
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_TRUE(contains(result.output, "259  cut short when recorded")) << result.output;
    EXPECT_TRUE(contains(result.output, "every NCOM and RCOM frame was refused"));
}

TEST_F(rtrange_program, completes_its_tables_even_if_nobody_reads_along) {
    const std::string command = "decode " + example.string() + " -o " + in_folder("out");
    EXPECT_EQ(rtrange(command + " > /dev/full").exit_code, 1);
    const std::string table = content(folder / "out/hunter.csv");
    ASSERT_FALSE(table.empty());
    EXPECT_EQ(table.back(), '\n');
    EXPECT_EQ(rtrange("info > /dev/full").exit_code, 1);
}

TEST_F(rtrange_program, removes_tables_of_an_earlier_run) {
    fs::create_directories(folder / "out");
    write(folder / "out/target4.csv", "old");
    write(folder / "out/notes.txt", "mine");
    EXPECT_EQ(rtrange("decode " + example.string() + " -o " + in_folder("out")).exit_code, 0);
    EXPECT_FALSE(fs::exists(folder / "out/target4.csv"));
    EXPECT_TRUE(fs::exists(folder / "out/notes.txt"));
}

TEST_F(rtrange_program, writes_the_selection_alone) {
    rtrange("decode " + example.string() + " -o " + in_folder("all"));
    const result result = rtrange("decode " + example.string() + " -o " + in_folder("part") +
                                  " --fields roll,satellites,roll,target_address"
                                  " --units target1,rcom --from 0.5 --to 2026-01-05T10:00:00.8Z");
    ASSERT_EQ(result.exit_code, 0) << result.output;
    EXPECT_FALSE(fs::exists(folder / "part/hunter.csv"));
    const csv_table all(folder / "all/target1.csv");
    const csv_table part(folder / "part/target1.csv");
    EXPECT_EQ(part.header,
              (std::vector<std::string>{"reference_timestamp", "source", "roll", "satellites"}));
    std::vector<std::vector<std::string>> expected;
    for (std::size_t row = 0; row < all.rows.size(); ++row) {
        const std::string& time = all.cell(row, "reference_timestamp");
        if (time >= "1767607200500000000" && time < "1767607200800000000")
            expected.push_back({time, all.cell(row, "source"), all.cell(row, "roll"),
                                all.cell(row, "satellites")});
    }
    EXPECT_EQ(part.rows, expected);
    EXPECT_EQ(expected.size(), 30U);
    EXPECT_EQ(csv_table(folder / "part/rcom.csv").header,
              (std::vector<std::string>{"reference_timestamp", "target_address"}));

    // The same limits, once more in the other ways to write them.
    rtrange("decode " + example.string() + " -o " + in_folder("same") +
            " --fields roll,satellites --units target1 --from '2026-01-05 10:00:00.5 UTC' --to .8");
    EXPECT_EQ(content(folder / "same/target1.csv"), content(folder / "part/target1.csv"));
    EXPECT_TRUE(
        contains(rtrange("decode " + example.string() + " --from 5 -o " + in_folder("none")).output,
                 "the selection leaves nothing"));
}

TEST_F(rtrange_program, keeps_an_earlier_result_if_there_is_no_new_one) {
    write(folder / "none.pcap", content(example).substr(0, 24));
    write(folder / "cut.pcap", content(example).substr(0, 60));
    fs::create_directories(folder / "tables");
    const struct {
        std::string command;
        fs::path earlier;
    } cases[] = {
        {"decode -o " + in_folder("tables"), folder / "tables/hunter.csv"},
        {"decode --as hdf5 -o " + in_folder("run.h5"), folder / "run.h5"},
        {"report -o " + in_folder("run.html"), folder / "run.html"},
    };
    for (const auto& [command, earlier] : cases) {
        write(earlier, "earlier");
        for (const char* const capture : {"none.pcap", "cut.pcap", "missing.pcap"})
            EXPECT_EQ(rtrange(command + " " + in_folder(capture)).exit_code, 1) << capture;
        if (command.starts_with("decode"))
            rtrange(command + " --from 100 " + example.string());
        EXPECT_EQ(content(earlier), "earlier") << command;
    }
}

TEST_F(rtrange_program, reads_a_pipe_and_takes_a_capture_behind_a_list) {
    const result result = rtrange("decode -o " + in_folder("out") +
                                  " --fields roll,pitch /dev/stdin < " + example.string());
    EXPECT_EQ(result.exit_code, 0) << result.output;
    EXPECT_TRUE(contains(result.output, "260 frames")) << result.output;
    const std::string piped = "decode /dev/stdin -o " + in_folder("piped") + " --fields roll,pitch";
    std::system(("cat " + example.string() + " | " RTRANGE " " + piped + " > /dev/null").c_str());
    EXPECT_EQ(content(folder / "piped/hunter.csv"), content(folder / "out/hunter.csv"));
}

TEST_F(rtrange_program, refuses_in_one_line_what_it_cannot_do) {
    fs::create_directories(folder / "run.csv");
    fs::copy_file(example, folder / "run.csv/hunter.csv");
    write(folder / "run.pcap.gz", "\x1f\x8b, and so on, and so on");
    write(folder / "empty.pcap", "");
    write(folder / "text.pcap", "this is no capture at all, just a text");
    write(folder / "none.pcap", content(example).substr(0, 24));
    std::string wlan = content(example);
    wlan[20] = 105; // link type of IEEE 802.11
    write(folder / "wlan.pcap", wlan);
    write(folder / "file", "");
    fs::create_directories(folder / "full");
    fs::create_symlink("/dev/full", folder / "full/hunter.csv");

    const struct {
        std::string arguments;
        int exit_code;
        std::string message;
    } cases[] = {
        {"decode " + in_folder("empty.pcap"), 1, "is empty"},
        {"decode " + in_folder("text.pcap"), 1, "unknown file format"},
        {"decode " + in_folder("none.pcap") + " -o " + in_folder("x"), 1, "no frames"},
        {"decode " + in_folder("wlan.pcap"), 1, "not Ethernet"},
        {"decode " + in_folder("missing.pcap"), 1, "No such file"},
        {"decode " + folder.string(), 1, "is a folder"},
        {"decode " + example.string() + " -o " + in_folder("file"), 1, "cannot create the folder"},
        {"decode " + example.string() + " -o " + in_folder("full"), 1, "No space left"},
        {"decode " + example.string() + " --plugin " + in_folder("file"), 1, "cannot load"},
        {"info /dev/null", 1, "cannot load"},
        {"info " + (fs::path(RTRANGE).parent_path() / "libzelc.so").string(), 1,
         "is not a formatter plug-in"},
        {"info " BROKEN_PLUGIN, 1, "gives no metadata"},
        {"simulate /no/such/folder/x.pcap", 1, "cannot write"},
        {"simulate " + in_folder("x.pcapng"), 1, "name it .pcap"},
        {"simulate /dev/full", 1, "No space left"},
        {"decode", 2, "CAPTURE or --interface is required"},
        {"decode " + example.string() + " --interface lo", 2, "CAPTURE excludes --interface"},
        {"decode " + example.string() + " --as xml", 2, "--as"},
        {"decode " + example.string() + " --as hdf5 -o " + example.string(), 2, "is the capture"},
        {"decode " + example.string() + " -o " + in_folder("x.h5"), 2, "add --as hdf5"},
        {"decode " + example.string() + " --fields roll,headin", 2, "nearest name is 'heading'"},
        {"decode " + example.string() + " --units target5", 2, "nearest name is 'target"},
        {"decode " + example.string() + " --from yesterday", 2, "seconds since the start"},
        {"decode " + example.string() + " --to 2026-02-30T10:00:00", 2, "is no time"},
        {"decode " + example.string() + " --to -1", 2, "is no time"},
        {"decode " + example.string() + " --format zel.can", 2, "--format"},
        {"simulate x.pcap --targets 5", 2, "--targets"},
        {"nonsense", 2, "not expected: nonsense"},
        {"", 2, "name a command"},
        {"decode --interface ''", 2, "--interface"},
        {"decode " + example.string() + " --from 5 --to 3", 2, "--from has to be before --to"},
        {"decode " + example.string() + " --fields source", 2, "always there"},
        {"decode " + in_folder("run.csv/hunter.csv") + " -o " + in_folder("run.csv"), 2,
         "is the capture"},
        {"decode " + in_folder("run.pcap.gz"), 1, "unpack it first"},
        {"simulate x.pcap --seed -1", 2, "--seed"},
    };
    for (const auto& wrong : cases) {
        const result result = rtrange(wrong.arguments);
        EXPECT_EQ(result.exit_code, wrong.exit_code) << wrong.arguments << "\n" << result.output;
        EXPECT_TRUE(contains(result.output, wrong.message)) << result.output;
        const auto lines = split(result.output, '\n');
        EXPECT_EQ(
            std::count_if(lines.begin(), lines.end(),
                          [](const std::string& line) { return line.starts_with("rtrange: "); }),
            1)
            << result.output;
        EXPECT_TRUE(lines.back().starts_with("rtrange: ")) << result.output;
    }
}

TEST_F(rtrange_program, simulates_the_same_bytes_from_the_same_seed) {
    const std::string options = " --duration 1 --rate 50";
    ASSERT_EQ(rtrange("simulate " + in_folder("again.pcap") + options).exit_code, 0);
    EXPECT_EQ(content(folder / "again.pcap"), content(example));
    rtrange("simulate " + in_folder("other.pcap") + options + " --seed 2");
    EXPECT_NE(content(folder / "other.pcap"), content(example));
}

TEST_F(rtrange_program, shows_the_plug_in_and_the_records) {
    const result info = rtrange("info");
    EXPECT_EQ(info.exit_code, 0);
    for (const char* const expected : {"zel-library-type     formatter", "zel.rtrange\n",
                                       "zel.eth.rtrange\n", "zel_formatter_data_source_binding_t"})
        EXPECT_TRUE(contains(info.output, expected)) << expected;
    const result fields = rtrange("fields");
    EXPECT_EQ(fields.exit_code, 0);
    EXPECT_TRUE(contains(fields.output, "curvature"));
    EXPECT_EQ(rtrange("fields --markdown").output, content(RECORD_REFERENCE))
        << "write it again: rtrange fields --markdown > docs/records.md";
    EXPECT_EQ(rtrange("fields --c").output, content(RECORD_HEADER))
        << "write it again: rtrange fields --c > include/zel/rt_range_records.h";
}

} // namespace rtrange_test
