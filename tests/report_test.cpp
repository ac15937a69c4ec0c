// Reports: every number on the page, against the CSV tables of the same capture.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

using nlohmann::json;

std::string decode_base64(const std::string& text) {
    static const std::string digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char digit : text.substr(0, text.find('='))) {
        bits = bits << 6 | static_cast<std::uint32_t>(digits.find(digit));
        count += 6;
        if (count >= 8)
            bytes += static_cast<char>(bits >> (count -= 8));
    }
    return bytes;
}

std::string between(const std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t from = text.find(begin);
    EXPECT_NE(from, std::string::npos) << begin;
    const std::size_t at = from + begin.size();
    return text.substr(at, text.find(end, at) - at);
}

/// What a browser makes of a page before it draws.
struct report_page {
    using columns = std::map<std::string, std::vector<double>>;

    explicit report_page(const fs::path& file) : html(content(file)) {
        summary = json::parse(
            between(html, "<script type=\"application/json\" id=\"summary\">", "</script>"));
        for (const json& stream : summary["streams"])
            streams[key(stream)] = {};
        const std::string tag = "<script type=\"text/plain\" data-stream=\"";
        for (std::size_t at = 0; (at = html.find(tag, at)) != std::string::npos; ++at)
            read_block(html.substr(at, html.find("</script>", at) - at));
    }

    static std::string key(const json& stream) {
        return stream["unit"].get<std::string>() + " " + stream["kind"].get<std::string>();
    }

    void read_block(const std::string& block) {
        const json& stream = summary["streams"][std::stoul(between(block, "data-stream=\"", "\""))];
        const std::size_t rows = std::stoul(between(block, "data-rows=\"", "\""));
        const std::string bytes = decode_base64(block.substr(block.find('>') + 1));
        const char* at = bytes.data();
        const auto read = [&](const std::string& name, auto number) {
            for (std::size_t row = 0; row < rows; ++row, at += sizeof(number)) {
                std::memcpy(&number, at, sizeof(number));
                streams[key(stream)][name].push_back(static_cast<double>(number));
            }
        };
        const auto read_runs = [&](const std::string& name) {
            std::uint32_t count = 0;
            std::memcpy(&count, at, sizeof(count));
            const char* end = at + sizeof(count);
            at = end + sizeof(std::uint32_t) * count;
            for (std::uint32_t row = 0, last = 0; count > 0; --count, end += sizeof(last)) {
                float number = 0;
                std::memcpy(&last, end, sizeof(last));
                std::memcpy(&number, at, sizeof(number));
                at += sizeof(number);
                for (; row < last; ++row)
                    streams[key(stream)][name].push_back(static_cast<double>(number));
            }
        };
        read("time", double{});
        for (const json& column : stream["columns"])
            if (column["runs"] == true)
                read_runs(column["name"]);
            else
                column["bits"] == 64 ? read(column["name"], double{})
                                     : read(column["name"], float{});
        EXPECT_EQ(at, bytes.data() + bytes.size());
    }

    std::string html;
    json summary;
    std::map<std::string, columns> streams;
};

/// What a page shows of a cell of a table.
double shown(const std::string& cell, bool is_double) {
    if (cell.empty())
        return std::numeric_limits<double>::quiet_NaN();
    const double number = std::strtod(cell.c_str(), nullptr);
    return is_double ? number : static_cast<double>(static_cast<float>(number));
}

/// The rows of NCOM packets, or those of range packets.
std::vector<std::size_t> rows_of_kind(const csv_table& table, bool navigation) {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        if ((table.cell(row, "packet") != "range") == navigation)
            rows.push_back(row);
    return rows;
}

void expect_same(const report_page::columns& columns, const csv_table& table,
                 const std::vector<std::size_t>& rows, const json& stream) {
    ASSERT_EQ(columns.at("time").size(), rows.size());
    EXPECT_EQ(stream["rows"], rows.size());
    const std::uint64_t zero = 1'767'607'200'000'000'000;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto time = std::stoull(table.cell(rows[i], "reference_timestamp"));
        ASSERT_NEAR(columns.at("time")[i], static_cast<double>(time - zero) * 1e-9, 1e-9);
        for (const json& column : stream["columns"]) {
            const std::string name = column["name"];
            if (name == "east" || name == "north")
                continue;
            const double expected = shown(table.cell(rows[i], name), column["bits"] == 64);
            const double actual = columns.at(name)[i];
            ASSERT_TRUE(actual == expected || (std::isnan(actual) && std::isnan(expected)))
                << name << " in row " << rows[i] << ": " << actual << " for " << expected;
        }
    }
}

using report = rtrange_program;

TEST_F(report, shows_the_numbers_of_the_tables) {
    // Long enough for several blocks of rows.
    succeed("simulate run.pcap --duration 50");
    succeed("decode run.pcap -o tables");
    expect_contains(succeed("report run.pcap -o run.html"), {"run.html in a browser"});

    const report_page page(folder / "run.html");
    std::size_t compared = 0;
    for (const json& stream : page.summary["streams"]) {
        const std::string unit = stream["unit"];
        SCOPED_TRACE(page.key(stream));
        // The only sender that is not identified from its first packet on.
        const bool is_unidentified = unit == "195.0.0.10";
        const csv_table table(folder / "tables" /
                              ((is_unidentified ? "unidentified" : unit) + ".csv"));
        expect_same(page.streams.at(page.key(stream)), table,
                    rows_of_kind(table, stream["kind"] == "navigation"), stream);
        ++compared;
    }
    EXPECT_EQ(compared, 6U);
    EXPECT_EQ(page.summary["units"][1]["unit"], "target1");
    EXPECT_EQ(page.summary["units"][1]["address"], "195.0.0.21");
    EXPECT_EQ(page.summary["outcomes"][0]["count"], page.summary["frames"].get<int>() - 100 - 100);
}

TEST_F(report, places_positions_on_a_plane) {
    succeed("decode following.pcap -o tables");
    succeed("report following.pcap -o run.html");
    const auto columns = report_page(folder / "run.html").streams.at("target1 navigation");
    const csv_table table(folder / "tables/target1.csv");
    const csv_table first(folder / "tables/unidentified.csv");
    const auto rows = rows_of_kind(table, true);
    // A degree of latitude and of longitude at 52.4 degrees north, in metres.
    for (const auto& [axis, angle, metres] :
         {std::tuple{"north", "latitude", 111272.3}, std::tuple{"east", "longitude", 68058.5}})
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_NEAR(columns.at(axis)[i],
                        (table.number(rows[i], angle) - first.number(0, angle)) * metres, 0.01);
}

TEST_F(report, keeps_ncom_of_unknown_units_apart_from_the_hunters) {
    succeed("report following.pcap -o run.html");
    const report_page page(folder / "run.html");
    EXPECT_EQ(page.streams.at("195.0.0.10 navigation").at("time").size(), 1U);
    EXPECT_EQ(page.streams.at("hunter navigation").at("time").size(), 49U);

    // Each step back in time makes the decoder forget the addresses.
    write(folder / "twice.pcap", joined(content(example), content(example)));
    succeed("report twice.pcap -o twice.html");
    const report_page twice(folder / "twice.html");
    EXPECT_EQ(twice.streams.at("195.0.0.10 navigation").at("time").size(), 2U);
    const json& steps_back = twice.summary["steps_back"];
    EXPECT_EQ(steps_back["count"], 1);
    EXPECT_NEAR(steps_back["first"][0]["from"].get<double>(), 0.98, 0.01);
    EXPECT_NEAR(steps_back["first"][0]["to"].get<double>(), 0, 1e-6);
}

TEST_F(report, draws_selected_units_fields_and_times) {
    succeed("report following.pcap -o run.html --fields latitude,lane_d5,ttc_lateral"
            " --units target1,rcom --from 0.2 --to 0.4");
    const report_page page(folder / "run.html");
    EXPECT_TRUE(page.summary["named_fields"]);
    ASSERT_EQ(page.streams.size(), 3U);
    for (const auto& [name, columns] : page.streams) {
        EXPECT_GE(columns.at("time").front(), 0.2);
        EXPECT_LT(columns.at("time").back(), 0.4);
    }
    EXPECT_EQ(page.streams.at("rcom rcom").size(), 2U);
    const auto& range = page.streams.at("target1 range");
    EXPECT_EQ(range.size(), 5U); // time, east, north and two fields
    EXPECT_NEAR(range.at("latitude").front(), 52.4, 0.01);
}

TEST_F(report, draws_nothing_that_no_packet_has_said_yet) {
    succeed("report following.pcap -o run.html --fields heading,range_lateral"
            " --units hunter,target1");
    const report_page page(folder / "run.html");
    // The first range packet comes before the target's NCOM.
    const auto& range = page.streams.at("target1 range");
    EXPECT_TRUE(std::isnan(range.at("heading").front()));
    EXPECT_TRUE(std::isnan(range.at("east").front()));
    EXPECT_FALSE(std::isnan(range.at("range_lateral").front()));
    EXPECT_FALSE(page.streams.at("hunter navigation").contains("range_lateral"));
}

TEST_F(report, keeps_what_came_before_a_truncated_end) {
    const std::string capture = content(example);
    write(folder / "cut.pcap", capture.substr(0, capture.size() / 2));
    const result result = rtrange("report cut.pcap -o cut.html");
    EXPECT_EQ(result.exit_code, 1);
    expect_contains(result.output, {"is broken after frame"});
    const report_page page(folder / "cut.html");
    EXPECT_GT(page.streams.at("hunter navigation").at("time").size(), 20U);
    ASSERT_EQ(page.summary["notes"].size(), 1U);
    expect_contains(page.summary["notes"][0], {"'cut.pcap' is broken after frame"});
}

TEST_F(report, is_one_file_that_no_name_can_break_out_of) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows permits no such file name";
    fs::copy_file(example, folder / "<script>alert(1)<!-- \"'&\xff.pcap");
    succeed("report *script* -o run.html");
    const report_page page(folder / "run.html");
    EXPECT_FALSE(contains(page.html, "alert(1)<"));
    EXPECT_EQ(page.summary["captures"][0], "<script>alert(1)<!-- \"'&\xEF\xBF\xBD.pcap");
    for (const char* const outside : {"src=", "href=\"http", "@import", "url("})
        EXPECT_FALSE(contains(page.html, outside)) << outside;
    EXPECT_TRUE(contains(page.html, "The MIT License"));
}

} // namespace
} // namespace rtrange_test
