// Tables of the view "measured" against what the simulated vehicles did.

#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <numbers>
#include <numeric>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "simulation/rcom_packets.hpp"
#include "simulation/simulated_traffic.hpp"
#include "simulation/status_data.hpp"
#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

using namespace zel::simulation;
using frame_bytes = std::string;

constexpr double half_microradian = 0.5000001e-6 * 180.0 / std::numbers::pi;
/// Both velocities are rounded to 0.1 mm/s, the heading to a microradian.
constexpr double velocity_tolerance = 1.5e-4;

double degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

double angle_between(double first, double second) {
    return std::remainder(first - second, 360.0);
}

std::uint16_t destination_port(const frame_bytes& frame) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(frame[i]); };
    return static_cast<std::uint16_t>(byte(36) << 8 | byte(37));
}
bool is_ncom(const frame_bytes& frame) {
    return destination_port(frame) == 3000;
}
bool is_wrapped_ncom(const frame_bytes& frame) {
    return destination_port(frame) == 3003 && frame[43] == 3;
}

class measured_view : public rtrange_program {
protected:
    /// Frames of a run. `change` may change a frame, or drop it by returning false.
    using change = std::function<bool(double time, frame_bytes& frame)>;

    void simulate(const std::string& name, const change& change_frame = {}) {
        std::string pcap = content(example).substr(0, pcap_header_size);
        for (std::uint64_t tick = 0; tick < tick_count(options); ++tick)
            send_tick(options, vehicles(), tick,
                      [&](std::uint64_t time_ns, std::span<const std::uint8_t> bytes) {
                          frame_bytes frame(bytes.begin(), bytes.end());
                          if (change_frame && !change_frame(tick_time(options, tick), frame))
                              return;
                          const auto size = static_cast<std::uint32_t>(frame.size());
                          pcap += raw(frame_head{static_cast<std::uint32_t>(time_ns / 1000000000),
                                                 static_cast<std::uint32_t>(time_ns % 1000000000),
                                                 size, size}) +
                                  frame;
                      });
        write(folder / name, pcap);
    }

    scenario vehicles() const { return {options.seed, options.targets, options.scenario}; }

    csv_table table(const std::string& name) const { return csv_table(folder / "out" / name); }

    /// The tick in which the packet of a row was sent.
    std::uint64_t tick_of(const csv_table& table, std::size_t row) const {
        return (std::stoull(table.cell(row, "reference_timestamp")) - start_time_ns) *
               options.rate_hz / 1'000'000'000;
    }

    /// Compares an NCOM row with what the unit did.
    void expect_ncom_row(const csv_table& table, std::size_t row, std::size_t unit) const {
        const std::uint64_t tick = tick_of(table, row);
        const double time = tick_time(options, tick);
        const vehicle_motion truth = vehicles().unit(unit, time);
        if (unit == 0 && tick < initialising_ticks)
            return;
        const double heading = table.number(row, "heading");
        const double c = std::cos(truth.heading);
        const double s = std::sin(truth.heading);
        EXPECT_GE(heading, 0.0);
        EXPECT_LT(heading, 360.0);
        EXPECT_NEAR(angle_between(heading, degrees(truth.heading)), 0.0, half_microradian);
        EXPECT_NEAR(table.number(row, "vehicle_velocity_x"),
                    truth.velocity_north * c + truth.velocity_east * s, velocity_tolerance);
        EXPECT_NEAR(table.number(row, "vehicle_velocity_y"),
                    truth.velocity_north * s - truth.velocity_east * c, velocity_tolerance);
        EXPECT_NEAR(table.number(row, "vehicle_velocity_x_kmh"),
                    3.6 * table.number(row, "vehicle_velocity_x"), 1e-9);
        const geographic_position position = scenario::geographic(truth);
        EXPECT_NEAR(table.number(row, "latitude"), degrees(position.latitude), 1e-12);
        EXPECT_NEAR(table.number(row, "longitude"), degrees(position.longitude), 1e-12);
        EXPECT_NEAR(table.number(row, "time_s"), time, 1e-3);
    }

    void expect_ranges(const csv_table& table, std::size_t row, std::size_t unit) const {
        // The row of an NCOM packet shows the ranges of the tick before: they are sent afterwards.
        const bool is_range = table.cell(row, "packet") == "range";
        const std::uint64_t tick = tick_of(table, row) - (is_range ? 0 : 1);
        const relative_motion truth = vehicles().target(unit, tick_time(options, tick));
        EXPECT_NEAR(table.number(row, "range_longitudinal"), truth.range_longitudinal, 0.501e-3);
        EXPECT_NEAR(table.number(row, "range_lateral"), -truth.range_lateral, 0.501e-3);
        EXPECT_NEAR(table.number(row, "range_rate_longitudinal"), truth.range_rate_longitudinal,
                    0.501e-2);
        const double rate = table.number(row, "range_rate_longitudinal");
        const double range = table.number(row, "range_longitudinal");
        const bool approaches = std::abs(rate) > 0.1000001 && range * rate < 0.0;
        EXPECT_EQ(table.cell(row, "ttc_longitudinal").empty(), !approaches) << range << " " << rate;
        if (approaches) {
            EXPECT_NEAR(table.number(row, "ttc_longitudinal"), -range / rate, 1e-9);
        }
    }

    /// Expects the cells of a column to be empty before the row in which `has_come` is true for the
    /// first time, and filled from then on.
    static void expect_filled_from(const csv_table& table, const std::string& column,
                                   const std::function<bool(std::size_t row)>& has_come) {
        bool come = false;
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            come = come || has_come(row);
            EXPECT_EQ(table.cell(row, column).empty(), !come) << column << " in row " << row;
        }
        EXPECT_TRUE(come) << column;
    }

    traffic_options options{.duration_s = 30, .rate_hz = 20};
};

/// Makes the second and third checksum of an NCOM packet the sums of their own parts.
void sum_by_parts(frame_bytes& frame, std::size_t ncom) {
    for (const auto& [begin, end] : {std::pair{22U, 61U}, std::pair{61U, 71U}})
        frame[ncom + end] =
            std::accumulate(frame.begin() + static_cast<std::ptrdiff_t>(ncom + begin),
                            frame.begin() + static_cast<std::ptrdiff_t>(ncom + end), char{0},
                            [](char sum, char byte) { return static_cast<char>(sum + byte); });
}

/// Columns that an NCOM status channel brings.
const std::map<std::string, std::uint8_t> ncom_channel_of{
    {"satellites", 0},
    {"position_mode", 0},
    {"gps_time_us", 0},
    {"utc_offset", 16},
    {"velocity_accuracy_age", 4},
    {"curvature", 4},
    {"position_accuracy_east", 3},
    {"position_accuracy_horizontal", 3},
    {"heading_accuracy", 5},
    {"primary_receiver_packets", 2},
    {"primary_antenna_x", 12},
    {"dual_antenna_pitch", 13},
    {"primary_antenna_accuracy_z", 14},
    {"differential_age", 20},
    {"output_displacement_y", 26},
    {"channel_77_byte_2", 77},
};

TEST_F(measured_view, shows_what_the_vehicles_did) {
    for (const scenario_kind kind :
         {scenario_kind::following, scenario_kind::oncoming, scenario_kind::crossing}) {
        options.scenario = kind;
        simulate("run.pcap");
        succeed("decode run.pcap --overwrite -o out");
        const csv_table hunter = table("hunter.csv");
        EXPECT_EQ(hunter.rows.size(), tick_count(options) - 1); // the first one is unidentified
        for (std::size_t row = 0; row < hunter.rows.size(); ++row)
            expect_ncom_row(hunter, row, 0);
        for (const auto& [column, channel] : ncom_channel_of)
            expect_filled_from(hunter, column, [&, wanted = channel](std::size_t row) {
                return ncom_channel_in_turn(tick_of(hunter, row)) == wanted || wanted == 0;
            });
        for (std::size_t unit = 1; unit <= options.targets; ++unit) {
            const csv_table target = table("target" + std::to_string(unit) + ".csv");
            EXPECT_EQ(target.rows.size(), 2 * tick_count(options) - 1);
            for (std::size_t row = 0; row < target.rows.size(); ++row) {
                const bool is_range = target.cell(row, "packet") == "range";
                if (!is_range)
                    expect_ncom_row(target, row, unit);
                expect_ranges(target, row, unit);
                const std::uint64_t tick = tick_of(target, row);
                if (is_range || tick < initialising_ticks)
                    continue;
                const double time = tick_time(options, tick);
                EXPECT_NEAR(angle_between(target.number(row, "relative_heading"),
                                          degrees(vehicles().unit(0, time).heading -
                                                  vehicles().unit(unit, time).heading)),
                            0.0, 2 * half_microradian);
            }
            for (const auto& [column, channel] : ncom_channel_of)
                expect_filled_from(target, column, [&, wanted = channel](std::size_t row) {
                    return target.cell(row, "packet") != "range" &&
                           ncom_channel_in_turn(tick_of(target, row)) == wanted;
                });
            expect_filled_from(target, "rcom_channel_17_c", [&](std::size_t row) {
                return target.cell(row, "packet") == "range" &&
                       rcom_channel_in_turn(tick_of(target, row)) == 17;
            });
        }
    }
}

/// Without RCOM, the plug-in files all units under the hunter, and fills one record with all.
TEST_F(measured_view, keeps_unidentified_senders_apart) {
    options.scenario = scenario_kind::oncoming;
    options.wrapped_every = 0;
    simulate("run.pcap", [](double, frame_bytes& frame) { return is_ncom(frame); });
    const std::string output = succeed("decode run.pcap -o out");
    expect_contains(output,
                    {"1798 NCOM packets came from addresses that were no unit's",
                     "195.0.0.10 (600, until 29.950 s)", "195.0.0.22 (599, until 29.950 s)"});
    EXPECT_FALSE(fs::exists(folder / "out/hunter.csv"));
    const csv_table all = table("unidentified.csv");
    const std::vector<std::string> senders{"195.0.0.10", "195.0.0.21", "195.0.0.22"};
    for (std::size_t unit = 0; unit < senders.size(); ++unit) {
        csv_table sender = all;
        std::erase_if(sender.rows, [&](const auto& row) {
            return std::find(row.begin(), row.end(), senders[unit]) == row.end();
        });
        for (std::size_t row = 0; row < sender.rows.size(); ++row)
            expect_ncom_row(sender, row, unit);
        for (const auto& [column, channel] : ncom_channel_of)
            expect_filled_from(sender, column, [&, wanted = channel](std::size_t row) {
                return ncom_channel_in_turn(tick_of(sender, row)) == wanted;
            });
        EXPECT_NEAR(sender.number(500, "gps_time_us") - sender.number(100, "gps_time_us"), 20e6, 1);
    }
}

/// The plug-in makes no record of the hunter from such a packet.
TEST_F(measured_view, takes_ncom_of_the_hunter_that_comes_wrapped) {
    simulate("run.pcap", [](double, frame_bytes& frame) {
        static std::size_t packets = 0;
        const auto sender = static_cast<std::uint8_t>(frame[29]);
        if (is_ncom(frame) && sender == unit_addresses[0][3] && ++packets % 2 == 0) {
            const bytes ncom(frame.begin() + 42, frame.end());
            const endpoint rcom{unit_addresses[0], 3003};
            const bytes wrapped =
                udp_frame(rcom, rcom, encode_wrapped_ncom(unit_addresses[0], ncom));
            frame.assign(wrapped.begin(), wrapped.end());
        }
        return true;
    });
    succeed("decode run.pcap -o out");
    const csv_table hunter = table("hunter.csv");
    EXPECT_EQ(hunter.cell(hunter.rows.size() - 1, "packet_count"),
              std::to_string(tick_count(options) - 1)); // the last one is a wrapped one
    EXPECT_EQ(hunter.rows.size(), tick_count(options) / 2 - 1);
    for (std::size_t row = 0; row < hunter.rows.size(); ++row)
        expect_ncom_row(hunter, row, 0);
    for (const auto& [column, channel] : ncom_channel_of)
        expect_filled_from(hunter, column, [&, wanted = channel](std::size_t row) {
            const std::uint64_t tick = tick_of(hunter, row);
            return wanted == 0 || ncom_channel_in_turn(tick) == wanted ||
                   ncom_channel_in_turn(tick - 1) == wanted;
        });
    const csv_table target = table("target1.csv");
    for (std::size_t row = 0; row < target.rows.size(); ++row) {
        const std::uint64_t tick = tick_of(target, row);
        if (target.cell(row, "packet") == "range" || tick < initialising_ticks)
            continue;
        const double time = tick_time(options, tick);
        const vehicle_motion own = vehicles().unit(1, time);
        const vehicle_motion others = vehicles().unit(0, time);
        EXPECT_NEAR(angle_between(target.number(row, "relative_heading"),
                                  degrees(others.heading - own.heading)),
                    0.0, 2 * half_microradian);
        EXPECT_NEAR(target.number(row, "relative_rate_z"), degrees(others.yaw_rate - own.yaw_rate),
                    1.1e-5 * 180.0 / std::numbers::pi);
    }
}

TEST_F(measured_view, starts_anew_after_a_gap) {
    const auto gap = [](double time, frame_bytes&) { return time < 4.0 || time > 12.0; };
    simulate("run.pcap", gap);
    const std::string output = succeed("decode run.pcap -o out");
    expect_contains(output, {"A new decoder was started at 12.05", "after a gap of 8.1"});
    const csv_table target = table("target1.csv");
    for (std::size_t row = 0; row < target.rows.size(); ++row) {
        if (target.cell(row, "packet") != "range")
            expect_ncom_row(target, row, 1);
        const bool fresh = tick_of(target, row) == 241; // the first one after the gap
        EXPECT_EQ(target.cell(row, "velocity_north").empty(), fresh || tick_of(target, row) == 0);
    }
    // Both can be had without.
    succeed("decode run.pcap -o never --restart-gap 0");
    EXPECT_FALSE(contains(succeed("decode run.pcap -o record --view record"), "A new decoder"));
    EXPECT_FALSE(csv_table(folder / "never/target1.csv").cell(200, "velocity_north").empty());
}

TEST_F(measured_view, counts_wrong_checksums_and_names_refused_frames) {
    std::uint64_t frames = 0;
    std::vector<std::string> refused;
    std::size_t wrong = 0;
    simulate("run.pcap", [&](double time, frame_bytes& frame) {
        ++frames;
        const bool wrapped = is_wrapped_ncom(frame);
        if (time > 20.0 && (is_ncom(frame) || wrapped))
            sum_by_parts(frame, wrapped ? 62 : 42); // right, too
        if ((is_ncom(frame) || wrapped) && frames % 7 == 0) {
            // A byte of each of the three parts in turn, the status channel's last one included.
            const std::size_t bytes[]{5, 40, 70};
            frame[(wrapped ? 62 : 42) + bytes[wrong % 3]] ^= 0x10;
            ++wrong;
        } else if (is_ncom(frame) && time > 10.0 && frames % 5 == 0) {
            frame[42 + 21] = 11;
            refused.push_back(std::to_string(frames));
        }
        return true;
    });
    const std::string output = succeed("decode run.pcap -o out");
    expect_contains(output, {std::to_string(wrong) + "  decoded, but: NCOM with a wrong checksum",
                             std::to_string(refused.size()) + "  refused: NCOM of structure B",
                             "(first: frame " + refused.front() + " of run.pcap)"});
    const csv_table table = this->table("refused.csv");
    std::vector<std::string> numbers;
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        numbers.push_back(table.cell(row, "frame"));
    EXPECT_EQ(numbers, refused);
    EXPECT_EQ(table.cell(0, "reason"), "NCOM of structure B; set the unit to A");
    const csv_table hunter = this->table("hunter.csv");
    const csv_table target = this->table("target1.csv");
    EXPECT_EQ(hunter.count("checksum_error", "0") + hunter.count("checksum_error", "1"),
              hunter.rows.size());
    EXPECT_GT(hunter.count("checksum_error", "1") + target.count("checksum_error", "1"), 0U);
}

TEST_F(measured_view, names_silent_units_and_accepts_overtaken_packets) {
    simulate("run.pcap", [](double time, frame_bytes& frame) {
        const bool is_hunter = static_cast<std::uint8_t>(frame[29]) == unit_addresses[0][3];
        if (is_ncom(frame) && is_hunter && time == 5.0)
            frame[42 + 2] = static_cast<char>(frame[42 + 2] - 1); // 256 ms earlier
        return !(is_ncom(frame) && is_hunter && time > 10.0 && time < 17.0);
    });
    const std::string output = succeed("decode run.pcap -o out");
    expect_contains(output, {"hunter: no NCOM for 7.000 s, from 10.000 s on"});
    EXPECT_FALSE(contains(output, "target1: no NCOM"));
    const csv_table hunter = table("hunter.csv");
    const std::size_t last = hunter.rows.size() - 1;
    EXPECT_NEAR(hunter.number(last, "gps_time_us") - hunter.number(0, "gps_time_us"),
                1e6 * (hunter.number(last, "time_s") - hunter.number(0, "time_s")), 1);
}

/// Markers of the wire are no values.
TEST_F(measured_view, leaves_invalid_values_empty) {
    options.wrapped_every = 0;
    simulate("run.pcap", [](double time, frame_bytes& frame) {
        if (is_ncom(frame) && time > 10.0) {
            const char channel = frame[42 + 62];
            if (channel == 3 || channel == 4)
                frame[42 + 63 + 6] = '\xFF'; // the age
            if (channel == 0) {
                frame[42 + 63 + 4] = '\xFF'; // satellites
                frame[42 + 63 + 5] = '\xFF'; // position mode
                frame[42 + 63 + 6] = '\x21'; // velocity mode, reserved
            }
        }
        return true;
    });
    succeed("decode run.pcap -o out --from 5");
    const csv_table hunter = table("hunter.csv");
    const std::size_t last = hunter.rows.size() - 1;
    for (const std::string column : {"position_accuracy_age", "velocity_accuracy_age", "satellites",
                                     "position_mode", "velocity_mode"}) {
        EXPECT_FALSE(hunter.cell(0, column).empty()) << column;
        EXPECT_TRUE(hunter.cell(last, column).empty()) << column;
    }
    EXPECT_FALSE(hunter.cell(last, "orientation_mode").empty());
    EXPECT_FALSE(hunter.cell(last, "position_accuracy_north").empty());
}

} // namespace
} // namespace rtrange_test
