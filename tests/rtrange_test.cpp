// The program, as a user calls it.

#include <functional>

#include "simulation/scenario.hpp"
#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {

TEST_F(rtrange_program, writes_a_row_per_package_with_the_values_of_the_run) {
    using namespace zel::simulation;
    const std::string output = succeed("decode following.pcap -o out --view record");
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
    expect_contains(output, {"260 frames", "258  decoded", "1  foreign: not IPv4",
                             "1  foreign: other UDP ports", "hunter (195.0.0.10)",
                             "target 1 (195.0.0.21)", "target 2 (195.0.0.22)", "50 rows"});

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
    succeed("decode following.pcap -o a");
    succeed("decode following.pcap --format zel.eth.rtrange -o b");
    EXPECT_EQ(content(folder / "a/target1.csv"), content(folder / "b/target1.csv"));
    // Time runs backwards in the middle, so that the second part is decoded like the first.
    write(folder / "twice.pcap", joined(content(example), content(example)));
    succeed("decode twice.pcap -o c");
    auto twice = csv_table(folder / "a/hunter.csv").rows;
    const auto once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(csv_table(folder / "c/hunter.csv").rows, twice);

    // Two halves are put into the order of time. Captures of the same time are refused.
    std::string halves[2]{content(example).substr(0, pcap_header_size), {}};
    halves[1] = halves[0];
    std::size_t frames = 0;
    for_each_frame(content(example), [&](const frame_head& head, const std::string& frame) {
        halves[frames++ / 130] += raw(head) + frame;
    });
    write(folder / "first.pcap", halves[0]);
    write(folder / "second.pcap", halves[1]);
    expect_contains(succeed("decode second.pcap first.pcap -o d"), {"in the order of"});
    EXPECT_EQ(content(folder / "d/target1.csv"), content(folder / "a/target1.csv"));
    const result overlapping = rtrange("decode following.pcap first.pcap -o e");
    EXPECT_EQ(overlapping.exit_code, 1);
    expect_contains(overlapping.output, {"first.pcap' overlaps"});
    EXPECT_FALSE(fs::exists(folder / "e"));
}

TEST_F(rtrange_program, keeps_what_came_before_a_truncated_end) {
    const std::string capture = content(example);
    write(folder / "half.pcap", capture.substr(0, capture.size() / 2));
    const result half = rtrange("decode half.pcap -o out");
    EXPECT_EQ(half.exit_code, 1);
    expect_contains(half.output, {"is broken after frame", "decoded"});
    EXPECT_GT(content(folder / "out/hunter.csv").size(), 1000U);

    // The next capture is decoded all the same.
    write(folder / "cut.pcap", capture.substr(0, capture.size() - 1));
    write(folder / "next.pcap", joined(delayed(capture, 9), capture));
    const result both = rtrange("decode cut.pcap next.pcap -o out --overwrite");
    EXPECT_EQ(both.exit_code, 1);
    expect_contains(both.output, {"cut.pcap' is broken after frame 259", "779 frames",
                                  "A new decoder was started at 9.000 s, after a gap of 8.0",
                                  "1 step back in time, at 2026-01-05 10:00:00"});
}

TEST_F(rtrange_program, does_not_take_late_foreign_traffic_for_a_step_back_in_time) {
    std::string capture = content(example);
    const std::size_t arp = capture.find(std::string("\x08\x06", 2) + std::string(20, '\0'));
    ASSERT_NE(arp, std::string::npos);
    capture[arp - 12 - 16] = 0; // its time in seconds, before the frame's two addresses
    write(folder / "late.pcap", capture);
    const std::string output = succeed("decode late.pcap -o out");
    expect_contains(output, {"258  decoded"});
    EXPECT_FALSE(contains(output, "steps back")) << output;
}

TEST_F(rtrange_program, says_that_frames_were_cut_short_by_the_recorder) {
    std::string capture = content(example).substr(0, pcap_header_size);
    for_each_frame(content(example), [&](frame_head head, const std::string& frame) {
        head.kept_length = std::min(head.kept_length, 60U);
        capture += raw(head) + frame.substr(0, 60);
    });
    write(folder / "short.pcap", capture);
    const result result = rtrange("decode short.pcap -o out");
    EXPECT_EQ(result.exit_code, 1);
    expect_contains(result.output,
                    {"259  cut short when recorded",
                     "refused: the recorder cut the frames short; record whole frames"});
}

TEST_F(rtrange_program, completes_its_tables_even_if_nobody_reads_along) {
    EXPECT_EQ(rtrange("decode following.pcap -o out > /dev/full").exit_code, 1);
    EXPECT_TRUE(content(folder / "out/hunter.csv").ends_with('\n'));
    const result info = rtrange("info 2>&1 > /dev/full #"); // only standard error is read
    EXPECT_EQ(info.exit_code, 1);
    EXPECT_TRUE(info.output.starts_with("rtrange: cannot write to standard output: No space left"))
        << info.output;
}

TEST_F(rtrange_program, writes_the_selection_alone) {
    succeed("decode following.pcap -o all");
    succeed("decode following.pcap -o part --fields roll,satellites,roll,target_address"
            " --units target1,rcom --from 0.5 --to 2026-01-05T10:00:00.8Z");
    EXPECT_FALSE(fs::exists(folder / "part/hunter.csv"));
    const csv_table all(folder / "all/target1.csv");
    const csv_table part(folder / "part/target1.csv");
    EXPECT_EQ(part.header, (std::vector<std::string>{"reference_timestamp", "time_s", "packet",
                                                     "roll", "satellites"}));
    std::vector<std::vector<std::string>> expected;
    for (std::size_t row = 0; row < all.rows.size(); ++row) {
        const std::string& time = all.cell(row, "reference_timestamp");
        if (time >= "1767607200500000000" && time < "1767607200800000000")
            expected.push_back({time, all.cell(row, "time_s"), all.cell(row, "packet"),
                                all.cell(row, "roll"), all.cell(row, "satellites")});
    }
    EXPECT_EQ(part.rows, expected);
    EXPECT_EQ(expected.size(), 30U);
    EXPECT_EQ(
        csv_table(folder / "part/rcom.csv").header,
        (std::vector<std::string>{"reference_timestamp", "time_s", "packet", "target_address"}));

    // The same limits, in the other ways to write them.
    const std::pair<std::string, std::string> limits[] = {
        {"'2026-01-05 10:00:00.5 UTC'", ".8"},
        {"0:00.5", "0:00:00.80"},
        {"2026-01-05T11:00:00.5+01:00", "2026-01-05T07:30:00.8-0230"},
        {"'2026-01-06 00:00:00.5 +14:00'", "2026-01-05T10:00:00.8+00:00"}};
    for (const auto& [from, to] : limits) {
        succeed("decode following.pcap -o same --overwrite --fields roll,satellites"
                " --units target1 --from " +
                from + " --to " + to);
        EXPECT_EQ(content(folder / "same/target1.csv"), content(folder / "part/target1.csv"))
            << from << " " << to;
    }
    expect_contains(succeed("decode following.pcap --fields ' roll, satellites ' -o spaced"),
                    {"49 rows"});
    EXPECT_EQ(csv_table(folder / "spaced/hunter.csv").header, part.header);
}

TEST_F(rtrange_program, reads_a_pipe_and_takes_a_capture_behind_a_list) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows has no /dev/stdin";
    expect_contains(succeed("decode -o out --fields roll,pitch /dev/stdin < following.pcap"),
                    {"260 frames"});
    run("cd " + folder.string() + "; cat following.pcap | " + program() +
        " decode /dev/stdin -o piped --fields roll,pitch");
    EXPECT_EQ(content(folder / "piped/hunter.csv"), content(folder / "out/hunter.csv"));
}

struct refusal {
    std::string arguments;
    int exit_code;
    std::string message;
};

void expect_refusals(const std::vector<refusal>& cases,
                     const std::function<result(const std::string&)>& rtrange) {
    for (const auto& [arguments, exit_code, message] : cases) {
        SCOPED_TRACE(arguments);
        const result result = rtrange(arguments);
        EXPECT_EQ(result.exit_code, exit_code) << result.output;
        expect_contains(result.output, {message});
        const auto lines = split(result.output, '\n');
        const auto is_said = [](const std::string& line) { return line.starts_with("rtrange: "); };
        EXPECT_EQ(std::ranges::count_if(lines, is_said), 1) << result.output;
        EXPECT_TRUE(!lines.empty() && is_said(lines.back())) << result.output;
    }
}

TEST_F(rtrange_program, refuses_wrong_arguments_in_one_line) {
    fs::create_directories(folder / "run.csv");
    fs::copy_file(example, folder / "run.csv/hunter.csv");
    write(folder / "file", "");
    const std::string decode = "decode following.pcap ";
    const std::string report = "report following.pcap ";
    expect_refusals(
        {
            {"", 2, "no command given; see 'rtrange --help'"},
            {"following.pcap", 2, "rtrange report following.pcap"},
            {"nonsense", 2, "there is no command 'nonsense'; see 'rtrange --help'"},
            {"decod following.pcap", 2,
             "there is no command 'decod'; the nearest name is 'decode'"},
            {"decode", 2, "CAPTURE or --interface is required"},
            {"decode --interface ''", 2, "--interface"},
            {decode + "--interface lo", 2, "CAPTURE excludes --interface"},
            {decode + "--as xml", 2, "use csv, hdf5 or mat; see 'rtrange decode --help'"},
            {decode + "--as hdf5 -o following.pcap", 2, "is one of the captures"},
            {decode + "-o x.h5", 2, "add --as hdf5"},
            {decode + "-o x.mat", 2, "add --as mat"},
            {decode + "-o x.mat --as hdf5", 2, "add --as mat"},
            {decode + "-o x.hdf5 --as mat", 2, "add --as hdf5"},
            {decode + "--fields roll,hading", 2, "nearest name is 'heading'; see 'rtrange fields'"},
            {decode + "--fields nosuch", 2, "no field 'nosuch'; see 'rtrange fields'"},
            {decode + "--restart-gap -1", 2, "'-1' is not a number of seconds; give 0 or more"},
            {decode + "--fields ROLL", 2, "nearest name is 'roll'"},
            {decode + "--fields range", 2, "'range_lateral', 'range_longitudinal'"},
            {decode + "--fields rate_longitudinal", 2, "'range_rate_longitudinal'"},
            {decode + "--fields source", 2, "is always written"},
            {decode + "--units target5", 2, "nearest name is 'target"},
            {decode + "--from yesterday", 2, "seconds since the first frame"},
            {decode + "--from 5 --to 3", 2, "--from must be before --to"},
            {decode + "--to 2026-02-30T10:00:00", 2, "is not a valid time"},
            {decode + "--to -1", 2, "'-1' is not a valid time"},
            {decode + "--from 1:5", 2, "is not a valid time"},
            {decode + "--from 1:60", 2, "is not a valid time"},
            {decode + "--from 1:60:00", 2, "is not a valid time"},
            {decode + "--from 1:30:", 2, "is not a valid time"},
            {decode + "--from 2:00 --to 1:59", 2, "--from must be before --to"},
            {decode + "--from 1:00:00 --to 59:59", 2, "--from must be before --to"},
            {decode + "--to 2026-01-05T10:00:00+15:00", 2, "is not a valid time"},
            {decode + "--to 2026-01-05T10:00:00Z+01:00", 2, "is not a valid time"},
            {decode + "--to 1970-01-01T00:30:00+01:00", 2, "is not a valid time"},
            {decode + "--to 2500-12-31T23:30:00-01:00", 2, "is not a valid time"},
            {decode + "--to 9999-12-31T23:30:00", 2, "is not a valid time"},
            {decode + "--format zel.can", 2, "--format"},
            {decode + "-o file", 1, "cannot create the folder"},
            {decode + "--plugin file", 1, "cannot load"},
            {"decode run.csv/hunter.csv -o run.csv", 2, "is one of the captures"},
            {"report", 2, "CAPTURE is required"},
            {report + "-o following.pcap", 2, "give the output another name"},
            {report + "--fields source_ip", 2, "is an address"},
            {report + "--fields headin", 2, "names are 'heading', 'heading_accuracy'"},
            {report + "--units car", 2, "there is no unit 'car'"},
            {report + "--from noon", 2, "is not a valid time"},
            {report + "--units rcom", 2, "only with --fields"},
            {"simulate x.pcap --targets 5", 2, "--targets"},
            {"simulate x.pcap --seed -1", 2, "--seed"},
            {"simulate x.pcapng", 1, "name it .pcap"},
            {"info file", 1, "cannot load"},
        },
        [this](const std::string& arguments) { return rtrange(arguments); });
    EXPECT_EQ(content(folder / "following.pcap"), content(example));
}

TEST_F(rtrange_program, helps_with_views_where_a_command_has_them) {
    for (const std::string command : {"decode", "report", "watch", "simulate", "info"}) {
        const std::string help = succeed(command + " --help");
        EXPECT_EQ(contains(help, "the view record"), contains(help, "--view")) << help;
    }
}

TEST_F(rtrange_program, refuses_in_one_line_what_it_cannot_read_or_write) {
    write(folder / "run.pcap.gz", "\x1f\x8b, and so on, and so on");
    write(folder / "empty.pcap", "");
    write(folder / "text.pcap", "this is no capture at all, just a text");
    write(folder / "none.pcap", content(example).substr(0, pcap_header_size));
    std::string wlan = content(example);
    wlan[20] = 105; // link type of IEEE 802.11
    write(folder / "wlan.pcap", wlan);
    const auto call = [this](const std::string& arguments) { return rtrange(arguments); };
    expect_refusals(
        {
            {"decode empty.pcap", 1, "is empty"},
            {"decode text.pcap", 1, "unknown file format"},
            {"decode none.pcap -o x", 1, "no frames"},
            {"decode wlan.pcap", 1, "not Ethernet"},
            {"decode missing.pcap", 1, "missing.pcap"},
            {"decode .", 1, "is a folder"},
            {"decode run.pcap.gz", 1, "with: zcat run.pcap.gz | rtrange decode - --output run\n"},
            {"report run.pcap.gz", 1, "zcat run.pcap.gz | rtrange report - --output run.html\n"},
            {"watch run.pcap.gz", 1, "zcat run.pcap.gz | rtrange watch -\n"},
            {"decode following.pcap --as hdf5 -o no/such/folder/run.h5", 1, "cannot write "},
            {"report missing.pcap", 1, "missing.pcap"},
            {"report following.pcap -o .", 1, "'.'"},
            {"report following.pcap -o no/such/folder/run.html", 1, "No such file"},
            {"simulate no/such/folder/x.pcap", 1, "cannot write"},
        },
        call);
    if (is_windows_program())
        return;
    const std::string zelc = fs::path(RTRANGE).parent_path() / "libzelc.so";
    expect_refusals(
        {
            {"decode following.pcap --as hdf5 -o /dev/full", 1, "cannot write "},
            {"report following.pcap -o /dev/full", 1, "No space left"},
            {"simulate /dev/full", 1, "No space left"},
            {"info " + zelc, 1, "is not a formatter plug-in"},
            {"info " BROKEN_PLUGIN, 1, "returned no metadata"},
        },
        call);
}

TEST_F(rtrange_program, names_the_thread_that_it_cannot_start) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers do not permit a stack of any size";
#endif
    if (is_windows_program())
        return; // which has no such limit
    // New threads get a stack of this size, in KiB, which is more than the address space.
    const std::string decode = "ulimit -s 200000000000 || exit 77; cd " + folder.string() + " && " +
                               program() + " decode following.pcap -o out";
    const result result = run(decode);
    if (result.exit_code == 77)
        GTEST_SKIP() << "this system does not permit a stack of any size";
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_TRUE(result.output.starts_with("rtrange: cannot start a thread")) << result.output;
    EXPECT_FALSE(fs::exists(folder / "out"));
    EXPECT_EQ(run(decode + ".h5 --as hdf5").exit_code, 0) << "threads are not needed";
}

TEST_F(rtrange_program, simulates_the_same_bytes_from_the_same_seed) {
    succeed("simulate again.pcap --duration 1 --rate 50");
    EXPECT_EQ(content(folder / "again.pcap"), content(example));
    succeed("simulate other.pcap --duration 1 --rate 50 --seed 2");
    EXPECT_NE(content(folder / "other.pcap"), content(example));
}

/// A text without the spaces that align its columns.
std::string with_single_spaces(std::string text) {
    const auto both_are_spaces = [](char a, char b) { return a == ' ' && b == ' '; };
    text.erase(std::unique(text.begin(), text.end(), both_are_spaces), text.end());
    return text;
}

TEST_F(rtrange_program, shows_the_plug_in_and_the_records) {
    expect_contains(succeed("info"), {"zel-library-type     formatter", "zel.rtrange\n",
                                      "zel.eth.rtrange\n", "zel_formatter_data_source_binding_t"});
    const std::string columns = with_single_spaces(succeed("fields"));
    expect_contains(columns,
                    {"\ntime_s s all the capture ",
                     "\nheading deg units NCOM or extended range channel 10 ",
                     "\nttc_lateral s targets extended range ", "\nlane_d0 rcom lane ",
                     "\nsample_rate_z deg/s samples NCOM ", "\nreason refused the capture "});
    EXPECT_EQ(columns.find("\nutc_time_us"), std::string::npos);
    expect_contains(with_single_spaces(succeed("fields --view record")),
                    {"utc_time_us us NCOM channel 0 and NCOM channel 16 "});
    EXPECT_EQ(succeed("fields --markdown"), content(RECORD_REFERENCE))
        << "write it again: rtrange fields --markdown > docs/records.md";
    EXPECT_EQ(rtrange("fields --c").output, content(RECORD_HEADER))
        << "write it again: rtrange fields --c > include/zel/rt_range_records.h";
}

} // namespace rtrange_test
