// The key figures of a run, against the tables of the same run.

#include <cmath>
#include <cstdio>
#include <functional>
#include <optional>
#include <sstream>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

/// The value of a row; nothing if one of its cells is empty.
using row_value = std::function<std::optional<double>(const csv_table&, std::size_t)>;

row_value column(const std::string& name) {
    return [name](const csv_table& table, std::size_t row) -> std::optional<double> {
        if (table.cell(row, name).empty())
            return std::nullopt;
        return table.number(row, name);
    };
}

row_value derived(const std::string& first, const std::string& second,
                  double (*from)(double, double)) {
    return [=](const csv_table& table, std::size_t row) -> std::optional<double> {
        if (table.cell(row, first).empty() || table.cell(row, second).empty())
            return std::nullopt;
        return from(table.number(row, first), table.number(row, second));
    };
}

double distance(double longitudinal, double lateral) {
    return std::sqrt(longitudinal * longitudinal + lateral * lateral);
}
double closing_speed(double range, double rate) {
    return range > 0 ? -rate : range < 0 ? rate : 0;
}

double as_it_is(double value) {
    return value;
}
double negated(double value) {
    return -value;
}
double magnitude(double value) {
    return std::abs(value);
}
double negated_magnitude(double value) {
    return -std::abs(value);
}

struct expected_figure {
    const char* title;
    const char* unit;
    bool of_range; ///< taken from rows of range packets only, otherwise from all others
    row_value value;
    double (*rank)(double); ///< the figure is the value with the highest rank
    int decimals;
};

const expected_figure expected_figures[]{
    {"Smallest longitudinal range", "m", true, column("range_longitudinal"), negated_magnitude, 2},
    {"Smallest time to collision", "s", true, column("ttc_longitudinal"), negated, 2},
    {"Largest closing speed", "m/s", true,
     derived("range_longitudinal", "range_rate_longitudinal", closing_speed), as_it_is, 2},
    {"Smallest total distance", "m", true, derived("range_longitudinal", "range_lateral", distance),
     negated, 2},
    {"Highest speed", "km/h", false, column("vehicle_velocity_x_kmh"), as_it_is, 1},
    {"Lowest speed", "km/h", false, column("vehicle_velocity_x_kmh"), negated, 1},
    {"Strongest braking", "m/s²", false, column("accel_x"), negated, 2},
    {"Strongest lateral acceleration", "m/s²", false, column("accel_y"), magnitude, 2},
    {"Largest yaw rate", "deg/s", false, column("rate_z"), magnitude, 2},
};

std::string number_text(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return std::strtod(text, nullptr) == 0.0 && text[0] == '-' ? text + 1 : text;
}

/// The line of a figure with single spaces; empty if the table has no value for it.
std::string line_of(const expected_figure& figure, const std::string& unit,
                    const csv_table& table) {
    std::optional<double> best;
    double time_s = 0;
    std::size_t rows = 0;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        if ((table.cell(row, "packet") == "range") != figure.of_range)
            continue;
        ++rows;
        const auto value = figure.value(table, row);
        if (!value || (best && figure.rank(*value) <= figure.rank(*best)))
            continue;
        best = value;
        time_s = table.number(row, "time_s");
    }
    const std::string start = unit + " " + figure.title;
    if (!best)
        return rows > 0 && start.ends_with("time to collision") ? start + " never approached\n"
                                                                : "";
    return start + " " + number_text(*best, figure.decimals) + " " + figure.unit + " at " +
           number_text(time_s, 3) + " s\n";
}

/// The lines that the tables in a folder call for.
std::string figures_in_tables(const fs::path& folder) {
    std::string lines;
    for (const char* const unit : {"hunter", "target1", "target2", "target3", "target4"}) {
        if (!fs::exists(folder / (std::string(unit) + ".csv")))
            continue;
        const csv_table table(folder / (std::string(unit) + ".csv"));
        for (const expected_figure& figure : expected_figures)
            if (!figure.of_range || std::string(unit) != "hunter")
                lines += line_of(figure, unit, table);
    }
    return lines;
}

/// The section "Key figures" of a summary without the lines of unidentified senders, with single
/// spaces.
std::string figures_in_summary(const std::string& output) {
    std::istringstream lines(
        output.substr(std::min(output.find("\nKey figures\n"), output.size())));
    std::string result, line;
    for (int i = 0; std::getline(lines, line) && (i < 2 || !line.empty()); ++i) {
        std::istringstream words(line);
        std::string text, word;
        while (words >> word)
            text += (text.empty() ? "" : " ") + word;
        if (i >= 2 && !(text[0] >= '0' && text[0] <= '9'))
            result += text + "\n";
    }
    return result;
}

class key_figures : public rtrange_program {
protected:
    /// Compares the figures that a report prints with the tables of the same selection.
    void expect_figures(const std::string& selection, const std::string& report_options = "") {
        SCOPED_TRACE(selection + report_options);
        succeed("decode run.pcap --overwrite " + selection);
        const std::string output =
            succeed("report run.pcap --overwrite " + selection + report_options);
        figures = figures_in_summary(output);
        EXPECT_EQ(figures, figures_in_tables(folder / "run"));
        EXPECT_NE(figures, "");
    }

    std::string figures; ///< of the last report
};

TEST_F(key_figures, are_those_of_all_rows_that_the_tables_have) {
    for (const std::string scenario : {"following", "oncoming", "crossing"}) {
        SCOPED_TRACE(scenario);
        succeed("simulate run.pcap --overwrite --targets 3 --rate 20 --duration 40 --scenario " +
                scenario);
        expect_figures("");
        expect_figures("--from 7.3 --to 12.1 --units target2,hunter");
        EXPECT_FALSE(contains(figures, "target1"));
        // Columns that are not plotted.
        expect_figures("--units target1", " --fields satellites");
    }
}

TEST_F(key_figures, keep_the_sign_of_a_target_that_has_been_passed) {
    succeed("simulate run.pcap --targets 1 --rate 20 --duration 60 --scenario oncoming");
    succeed("decode run.pcap");
    const csv_table target(folder / "run/target1.csv");
    std::string selection;
    for (std::size_t row = 0; row < target.rows.size(); ++row)
        if (target.cell(row, "packet") == "range" && target.number(row, "range_longitudinal") < 0) {
            // Later, the road bends, and the hunter turns towards the target.
            selection = " --from " + target.cell(row, "time_s") + " --to " +
                        number_text(target.number(row, "time_s") + 5, 3);
            break;
        }
    ASSERT_NE(selection, "");
    expect_figures("--units target1" + selection);
    expect_contains(figures, {"Smallest longitudinal range -", "Largest closing speed -",
                              "Smallest time to collision never approached"});
}

TEST_F(key_figures, of_senders_that_no_rcom_names_stand_under_their_addresses) {
    // The hunter's first packet comes before RCOM names its address.
    EXPECT_FALSE(contains(succeed("report following.pcap"), "  195.0.0.10  "));
    std::string capture = content(example).substr(0, pcap_header_size);
    for_each_frame(content(example), [&](const frame_head& head, const std::string& frame) {
        if (frame.size() > 38 && frame.substr(36, 2) == "\x0B\xB8")
            capture += raw(head) + frame;
    });
    write(folder / "ncom.pcap", capture);
    expect_contains(succeed("report ncom.pcap"),
                    {"  195.0.0.10       Highest speed ", "  195.0.0.21       Highest speed "});
}

TEST_F(key_figures, are_of_the_view_measured) {
    // The view record repeats values, and has marks instead of unknown ones.
    EXPECT_FALSE(contains(succeed("report following.pcap --view record"), "Key figures"));
}

} // namespace
} // namespace rtrange_test
