// The summary of a run in a file, and silence on the terminal.

#include <cstdio>

#include <nlohmann/json.hpp>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

using nlohmann::json;

template <typename... Arguments>
std::string text(const char* format, Arguments... arguments) {
    char result[1000];
    std::snprintf(result, sizeof(result), format, arguments...);
    return result;
}

/// What the terminal says of the same run.
std::vector<std::string> terminal_lines(const json& summary) {
    std::vector<std::string> lines{
        text("%d frames, %.3f s from %s\n", summary["frames"]["total"].get<int>(),
             summary["duration_s"].get<double>(), summary["start"].get<std::string>().c_str())};
    const std::pair<const char*, const char*> outcomes[]{
        {"decoded", "decoded"},
        {"not_ipv4", "foreign: not IPv4"},
        {"not_udp", "foreign: not UDP"},
        {"other_ports", "foreign: other UDP ports"},
        {"ignored_rcom", "ignored: RCOM"},
        {"with_vlan_tag", "with a VLAN tag"},
        {"linux_cooked", "with a Linux cooked header"},
        {"raw_ip", "without an Ethernet header"},
        {"cut", "cut short when recorded"}};
    for (const auto& [name, what] : outcomes)
        if (const int count = summary["frames"][name].get<int>(); count > 0)
            lines.push_back(text("  %9d  %s", count, what));
    const std::pair<const char*, const char*> remarks[]{{"refused", "refused"},
                                                        {"decoded_in_part", "decoded, but"}};
    for (const auto& [name, what] : remarks)
        for (const json& remark : summary[name])
            lines.push_back(
                text("  %9d  %s: %s (first: frame %d of %s)\n", remark["count"].get<int>(), what,
                     remark["reason"].get<std::string>().c_str(), remark["first_frame"].get<int>(),
                     remark["capture"].get<std::string>().c_str()));
    for (const json& unit : summary["units"])
        lines.push_back(
            text("  %9.3f s  %s", unit["time"].get<double>(),
                 unit["unit"] == "hunter" ? "hunter" : "target ") +
            (unit["unit"] == "hunter" ? "" : unit["unit"].get<std::string>().substr(6)) + " (" +
            unit["address"].get<std::string>() + ")");
    for (const json& note : summary["notes"])
        lines.push_back("  " + note.get<std::string>() + "\n");
    for (const json& table : summary["tables"])
        lines.push_back(text("  %9d %s  %s\n", table["rows"].get<int>(),
                             table["rows"] == 1 ? "row" : "rows",
                             table["place"].get<std::string>().c_str()));
    return lines;
}

class summaries : public rtrange_program {
protected:
    /// Runs a command with a summary and gives the summary, which must agree with the exit code.
    json summary_of(const std::string& arguments) {
        SCOPED_TRACE(arguments);
        last = rtrange(arguments + " --overwrite --summary summary.json");
        EXPECT_TRUE(fs::exists(folder / "summary.json")) << last.output;
        json summary = json::parse(content(folder / "summary.json"));
        EXPECT_EQ(summary["exit_code"], last.exit_code);
        for (const json& reason : summary["reasons"])
            expect_contains(last.output, {"rtrange: " + reason.get<std::string>() + "\n"});
        EXPECT_EQ(summary["reasons"].empty(), last.exit_code == 0);
        return summary;
    }

    result last;
};

/// A capture with foreign, refused, damaged and cut frames, a step back in time, and a gap.
std::string eventful_capture() {
    std::string capture = content(example).substr(0, pcap_header_size);
    std::size_t number = 0;
    for_each_frame(content(example), [&](frame_head head, std::string frame) {
        ++number;
        if (number == 40 || number == 50)
            head.kept_length = 60;
        if (number % 60 == 0 && frame.size() > 100)
            frame[60] = static_cast<char>(frame[60] + 1);
        frame.resize(head.kept_length);
        capture += raw(head) + frame;
    });
    return joined(joined(capture, capture), delayed(content(example), 30));
}

TEST_F(summaries, say_what_the_terminal_says) {
    write(folder / "run.pcap", eventful_capture());
    for (const std::string command :
         {"decode run.pcap", "decode run.pcap --as hdf5 --units target1", "report run.pcap",
          "decode run.pcap --view record"}) {
        const json summary = summary_of(command);
        SCOPED_TRACE(command);
        EXPECT_EQ(summary["outcome"], "complete");
        expect_contains(last.output, terminal_lines(summary));
        EXPECT_EQ(summary["steps_back"]["count"], 1);
        EXPECT_EQ(summary["restarts"]["count"], command.ends_with("record") ? 0 : 1);
        const json& frames = summary["frames"];
        int sum = 0;
        for (const char* const fate :
             {"decoded", "not_ipv4", "not_udp", "other_ports", "ignored_rcom", "refused"})
            sum += frames[fate].get<int>();
        EXPECT_EQ(sum, frames["total"]);
        EXPECT_EQ(frames["cut"], 4);
        EXPECT_GE(frames["refused"], 2);
        EXPECT_FALSE(summary["tables"].empty() || summary["units"].empty());
    }
}

TEST_F(summaries, contain_the_key_figures_of_the_tables) {
    const json of_report = summary_of("report following.pcap");
    const json of_tables = summary_of("decode following.pcap -o run");
    EXPECT_EQ(of_report["key_figures"], of_tables["key_figures"]);
    const json& speed = of_tables["key_figures"]["hunter"]["highest_speed"];
    const csv_table hunter(folder / "run/hunter.csv");
    double highest = 0, time_s = 0;
    for (std::size_t row = 0; row < hunter.rows.size(); ++row)
        if (hunter.number(row, "vehicle_velocity_x_kmh") > highest) {
            highest = hunter.number(row, "vehicle_velocity_x_kmh");
            time_s = hunter.number(row, "time_s");
        }
    EXPECT_EQ(speed["value"], highest);
    EXPECT_EQ(speed["time_s"], time_s);
    EXPECT_EQ(speed["unit"], "km/h");
    // Without their columns, they are unknown.
    const json selected = summary_of("decode following.pcap --units hunter --fields heading");
    EXPECT_EQ(selected["key_figures"], nullptr);
    EXPECT_EQ(selected["selection"]["fields"], json::array({"heading"}));
}

TEST_F(summaries, are_written_of_runs_that_fail) {
    const std::string capture = content(example);
    write(folder / "half.pcap", capture.substr(0, capture.size() / 2));
    write(folder / "text.pcap", "not a capture");
    const json half = summary_of("decode half.pcap");
    EXPECT_EQ(half["outcome"], "incomplete");
    EXPECT_GT(half["frames"]["decoded"], 100);
    EXPECT_FALSE(half["tables"].empty());
    struct {
        std::string arguments;
        int exit_code;
        bool has_frames;
    } const failing[]{{"decode text.pcap", 1, false},
                      {"decode missing.pcap", 1, false},
                      {"report following.pcap --from 3 --to 2", 2, false},
                      {"decode following.pcap --plugin missing.so", 1, false},
                      {"decode following.pcap --from 100 -o none", 1, true},
                      {"decode following.pcap -o none --plugin " BROKEN_PLUGIN, 1, false},
                      {"decode half.pcap --from 100 -o none", 1, true}};
    for (const auto& [arguments, exit_code, has_frames] : failing) {
        SCOPED_TRACE(arguments);
        const json summary = summary_of(arguments);
        EXPECT_EQ(summary["outcome"], "failed");
        EXPECT_EQ(last.exit_code, exit_code);
        EXPECT_EQ(summary["tables"], json::array());
        EXPECT_EQ(summary["frames"].is_object() && summary["frames"]["total"] > 0, has_frames);
    }
    EXPECT_FALSE(fs::exists(folder / "none"));
}

TEST_F(summaries, replace_nothing_but_earlier_summaries_and_only_on_demand) {
    succeed("decode following.pcap --summary summary.json");
    const std::string earlier = content(folder / "summary.json");
    result refused = rtrange("report following.pcap --summary summary.json");
    EXPECT_EQ(refused.exit_code, 1);
    expect_contains(refused.output, {"'summary.json' exists; add --overwrite"});
    EXPECT_EQ(content(folder / "summary.json"), earlier);
    EXPECT_FALSE(fs::exists(folder / "following.html"));
    write(folder / "mine.json", "{}");
    refused = rtrange("report following.pcap --overwrite --summary mine.json");
    expect_contains(refused.output, {"'mine.json' exists and is not a summary of rtrange"});
    EXPECT_EQ(content(folder / "mine.json"), "{}");
    EXPECT_EQ(rtrange("report following.pcap --overwrite --summary following.pcap").exit_code, 2);
    EXPECT_EQ(content(folder / "following.pcap"), content(example));
    EXPECT_EQ(summary_of("report following.pcap -o ./summary.json")["exit_code"], 2);
    EXPECT_EQ(names_in(folder),
              (std::set<std::string>{"following", "following.pcap", "mine.json", "summary.json"}));
    if (!is_windows_program()) // a program reads the summary in the same moment
        expect_contains(succeed("decode following.pcap --quiet --overwrite --summary /dev/stdout"
                                " | grep outcome"),
                        {"\"outcome\": \"complete\""});
}

TEST_F(summaries, come_without_a_word_on_the_terminal_if_it_is_to_be_quiet) {
    EXPECT_EQ(succeed("decode following.pcap --quiet --summary a.json"), "");
    EXPECT_EQ(succeed("report following.pcap -q"), "");
    EXPECT_EQ(content(folder / "a.json").substr(0, 1), "{");
    const std::string capture = content(example);
    write(folder / "half.pcap", capture.substr(0, capture.size() / 2));
    const result half = rtrange("decode half.pcap --quiet");
    EXPECT_EQ(half.exit_code, 1);
    EXPECT_TRUE(half.output.starts_with("rtrange: 'half.pcap' is broken after frame"))
        << half.output;
    EXPECT_EQ(split(half.output, '\n').size(), 1U) << half.output;
    const result none = rtrange("decode following.pcap --quiet --overwrite --from 100");
    EXPECT_EQ(none.output, "rtrange: no rows match --from 100: the capture ends at 0.98 s\n");
}

} // namespace
} // namespace rtrange_test
