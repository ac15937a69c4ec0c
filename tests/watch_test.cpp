// The live page, as browsers and others ask for it.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <thread>

#include "tests/harness/http_client.hpp"
#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"
#include "tests/harness/running_program.hpp"
#include "tools/rtrange/watch/row_ring.hpp"

namespace rtrange_test {
namespace {

using clock = std::chrono::steady_clock;

double seconds_since(clock::time_point start) {
    return std::chrono::duration<double>(clock::now() - start).count();
}

/// rtrange watch at a free port.
class watched_run : public running_program {
public:
    watched_run(const fs::path& folder, const std::string& arguments,
                const std::string& address = "127.0.0.1")
        : running_program(folder, "watch --listen " + address + ":0 " + arguments), url(line()),
          port(std::atoi(url.c_str() + url.rfind(':') + 1)) {
        const std::string shown = address == "0.0.0.0" ? "127.0.0.1" : address;
        EXPECT_TRUE(url.starts_with("Watch at http://" + shown + ":")) << url;
    }

    result end() {
        signal(SIGINT);
        return running_program::end();
    }

    std::string url;
    int port;
};

/// The rows of a table that a stream shows: those of range packets, or the others.
std::vector<std::size_t> rows_of(const csv_table& table, const std::string& kind) {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        if ((table.cell(row, "packet") == "range") == (kind == "range"))
            rows.push_back(row);
    return rows;
}

std::optional<double> value_of(const csv_table& table, std::size_t row, const std::string& name) {
    const std::string& cell = table.cell(row, name == "time" ? "time_s" : name);
    return cell.empty() ? std::nullopt : std::optional(std::stod(cell));
}

/// The smallest and the largest of the known values.
std::pair<double, double> extremes(const std::vector<std::optional<double>>& values) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::pair<double, double> result{infinity, -infinity};
    for (const auto& value : values)
        if (value)
            result = {std::min(result.first, *value), std::max(result.second, *value)};
    return result;
}

/// The tables of two folders, which must be the same.
void expect_same_tables(const fs::path& folder, const fs::path& expected) {
    EXPECT_EQ(names_in(folder), names_in(expected));
    for (const std::string& name : names_in(expected)) {
        const bool is_table = name.ends_with(".csv"); // the list of files has times
        EXPECT_TRUE(!is_table || content(folder / name) == content(expected / name)) << name;
    }
}

/// The most memory that a process has used so far.
long peak_memory_kb(pid_t process) {
    const std::string status = content("/proc/" + std::to_string(process) + "/status");
    const std::size_t at = status.find("VmHWM:");
    return at == std::string::npos ? -1 : std::atol(status.c_str() + at + 6);
}

using watching = rtrange_program;

TEST_F(watching, answers_requests_for_the_page_and_its_events_only) {
    watched_run run(folder, "following.pcap");
    const std::string local = "Host: localhost\r\n", port = std::to_string(run.port);
    std::string many_lines;
    for (int i = 0; i < 1000; ++i)
        many_lines += "X-" + std::to_string(i) + ": " + std::string(94, 'x') + "\r\n";
    const std::vector<std::tuple<std::string, std::string, std::vector<int>>> requests{
        {"GET / HTTP/1.1", local, {200}},
        {"GET / HTTP/1.1", "Host: 127.0.0.1:" + port + "\r\n", {200}},
        {"GET / HTTP/1.1", "Host: [::1]:" + port + "\r\n", {200}},
        {"GET / HTTP/1.1", "Host: example.com\r\n", {403}},
        {"GET /events HTTP/1.1", "Host: localhost.example.com:" + port + "\r\n", {403}},
        {"GET / HTTP/1.1", "Host: 192.0.2.1\r\n", {403}},
        {"GET / HTTP/1.1", "Host: localhost:0x50\r\n", {403}},
        {"GET / HTTP/1.1", local + "Host: example.com\r\n", {403}},
        {"GET / HTTP/1.1", "", {403}},
        {"POST / HTTP/1.1", local + "Content-Length: 3\r\n", {405}},
        {"HEAD / HTTP/1.1", local, {405}},
        {"DELETE /events HTTP/1.1", local, {405}},
        {"GET /favicon.ico HTTP/1.1", local, {404}},
        {"GET /../../etc/passwd HTTP/1.1", local, {404}},
        {"GET /%2e%2e/etc/passwd HTTP/1.1", local, {404}},
        {"GET /events HTTP/1.1", local + "Range: bytes=5-2\r\n", {416}},
        {"GET / HTTP/1.1", local + "Range: bytes=0-3\r\n", {416}},
        {"nonsense", "", {400}},
        // The connection may end before such a request has been sent, which takes the answer away.
        {"GET / HTTP/1.1", local + "X: " + std::string(100'000, 'x') + "\r\n", {400, 431, 0}},
        {"GET / HTTP/1.1", local + many_lines, {400, 431, 0}},
        {"GET /" + std::string(100'000, 'x') + " HTTP/1.1", local, {414, 400, 0}},
    };
    for (const auto& [line, headers, statuses] : requests) {
        const std::string answer = answer_to(run.port, line + "\r\n" + headers + "\r\n");
        EXPECT_TRUE(std::ranges::find(statuses, status_in(answer)) != statuses.end())
            << line.substr(0, 80) << "\n"
            << headers.substr(0, 80) << "\n"
            << answer;
        if (status_in(answer) == 403)
            expect_contains(answer, {"Open this page by the address 127.0.0.1:" + port});
        if (status_in(answer) == 405)
            expect_contains(answer, {"Allow: GET"});
        EXPECT_FALSE(contains(answer, "Access-Control-Allow-Origin"));
    }
    const std::string page = answer_to(run.port, "GET / HTTP/1.1\r\n" + local + "\r\n");
    expect_contains(page, {"Content-Type: text/html", "default-src 'none'", "nosniff", "no-store",
                           "Referrer-Policy: no-referrer", "/events"});
    for (const char* const outside : {"src=\"http", "href=\"http", "url(http"})
        EXPECT_FALSE(contains(page, outside)) << outside;
    EXPECT_EQ(run.end().exit_code, 0);
}

TEST_F(watching, takes_any_address_but_no_foreign_name_where_it_listens_everywhere) {
    watched_run run(folder, "following.pcap", "0.0.0.0");
    const std::string port = std::to_string(run.port);
    expect_contains(run.line(), {"Anybody who can reach port " + port + " of this machine can",
                                 "on other machines, open its IP address with port " + port});
    for (const auto& [host, status] : std::map<std::string, int>{
             {"192.0.2.7:8080", 200}, {"[2001:db8::1]", 200}, {"pc.example.com", 403}})
        EXPECT_EQ(status_in(answer_to(run.port, "GET / HTTP/1.1\r\nHost: " + host + "\r\n\r\n")),
                  status)
            << host;
    expect_contains(answer_to(run.port, "GET / HTTP/1.1\r\nHost: pc\r\n\r\n"),
                    {"Open this page by the IP address of this machine, not by a name."});
    run.end();
}

TEST_F(watching, says_why_it_cannot_serve_before_it_writes_anything) {
    watched_run other(folder, "following.pcap");
    const std::map<std::string, std::pair<int, std::string>> faults{
        {"--listen 127.0.0.1:" + std::to_string(other.port), {1, "is in use"}},
        {"--listen 192.0.2.1:8080", {1, "is not an address of this machine"}},
        {"--listen 127.0.0.1", {2, "is not an IP address and a port"}},
        {"--listen example.com:80", {2, "is not an IP address and a port"}},
        {"--listen 127.0.0.1:65536", {2, "is not an IP address and a port"}},
        {"--speed -1", {2, "is not a speed"}},
        {"--speed nan", {2, "is not a speed"}},
        {"--speed fast", {2, "is not a speed"}},
        {"--speed 2 --interface lo", {2, " excludes --interface"}},
    };
    for (const auto& [arguments, fault] : faults) {
        const result result = rtrange("watch following.pcap -o out " + arguments);
        EXPECT_EQ(result.exit_code, fault.first) << arguments;
        expect_contains(result.output, {fault.second});
        EXPECT_EQ(split(result.output, '\n').size(), 1U) << result.output;
    }
    EXPECT_EQ(rtrange("watch following.pcap --as hdf5").exit_code, 2);
    EXPECT_FALSE(fs::exists(folder / "out"));
    other.end();
}

TEST_F(watching, sends_every_row_at_the_pace_of_the_recording) {
    succeed("simulate run.pcap --duration 2");
    succeed("decode run.pcap -o tables");
    // At half speed, no row is thinned unless the machine stalls for two seconds.
    const auto start = clock::now();
    watched_run run(folder, "run.pcap --speed 0.5");
    event_reader events(run.port);
    expect_contains(events.header(), {"Content-Type: text/event-stream"});
    const auto [name, data] = events.next();
    EXPECT_EQ(name, "start");
    EXPECT_EQ(data["title"], "run.pcap");
    EXPECT_EQ(data["live"], false);
    EXPECT_EQ(data["value_names"]["navigation_status"]["4"], "locked");
    EXPECT_EQ(data["key_figures"].size(), 9U);

    page_state page;
    page.read_to_end(events);
    EXPECT_GT(seconds_since(start), 3.9);
    EXPECT_LE(page.updates, 25 * seconds_since(start) + 2);
    EXPECT_EQ(page.last["units"][1],
              (nlohmann::json{{"unit", "target1"}, {"address", "195.0.0.21"}}));
    EXPECT_EQ(page.last["zero_ms"], 1767607200000.0);
    EXPECT_NEAR(page.last["now"], 1.99, 0.011);
    EXPECT_EQ(page.last["epoch"], 0);
    for (const auto& [stream, columns] : page.rows) {
        const auto& [unit, kind] = stream;
        const csv_table table(folder / "tables" /
                              ((unit.starts_with("195") ? "unidentified" : unit) + ".csv"));
        const auto rows = rows_of(table, kind);
        for (const auto& [column, values] : columns) {
            if (column == "east" || column == "north")
                continue;
            ASSERT_EQ(values.size(), rows.size()) << unit << kind << column;
            for (std::size_t i = 0; i < rows.size(); ++i)
                ASSERT_EQ(values[i], value_of(table, rows[i], column)) << unit << kind << column;
        }
    }
    EXPECT_EQ(page.rows.size(), 6U); // one packet comes before its sender is known
    run.end();
}

TEST_F(watching, keeps_the_extremes_of_thinned_rows_for_those_who_come_late) {
    succeed("simulate run.pcap --duration 40");
    succeed("decode run.pcap -o tables");
    watched_run run(folder, "run.pcap --speed 0");
    page_state first, late;
    event_reader events(run.port);
    events.next();
    first.read_to_end(events);
    event_reader later_events(run.port);
    later_events.next();
    late.read_to_end(later_events);
    for (const auto& [stream, columns] : late.rows) {
        if (stream.first.starts_with("195"))
            continue;
        const csv_table table(folder / "tables" / (stream.first + ".csv"));
        const auto rows = rows_of(table, stream.second);
        EXPECT_LT(columns.at("time").size(), rows.size() / 2);
        EXPECT_TRUE(std::ranges::is_sorted(columns.at("time")));
        EXPECT_EQ(columns.at("time").front(), value_of(table, rows.front(), "time"));
        EXPECT_EQ(columns.at("time").back(), value_of(table, rows.back(), "time"));
        const bool of_range = stream.second == "range";
        const auto all = [&](const char* name) {
            std::vector<std::optional<double>> values;
            for (const std::size_t row : rows)
                values.push_back(value_of(table, row, name));
            return extremes(values);
        };
        const auto kept = [&shown = columns](const char* name) { return extremes(shown.at(name)); };
        if (of_range) {
            EXPECT_EQ(kept("ttc_longitudinal").first, all("ttc_longitudinal").first);
            EXPECT_EQ(kept("range_longitudinal").first, all("range_longitudinal").first);
            EXPECT_EQ(kept("range_rate_longitudinal").first, all("range_rate_longitudinal").first);
        } else {
            EXPECT_EQ(kept("vehicle_velocity_x_kmh"), all("vehicle_velocity_x_kmh"));
            EXPECT_EQ(kept("accel_x").first, all("accel_x").first);
            const auto magnitude = [](std::pair<double, double> both) {
                return std::max(-both.first, both.second);
            };
            EXPECT_EQ(magnitude(kept("rate_z")), magnitude(all("rate_z")));
        }
    }
    run.end();
}

TEST_F(watching, writes_the_tables_of_decode_whoever_watches_and_ends_at_once) {
    succeed("simulate run.pcap --duration 8");
    succeed("decode run.pcap -o expected --samples");
    watched_run run(folder, "run.pcap --speed 2 -o tables --samples");
    const std::string request = "GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n";
    std::vector<std::unique_ptr<connection>> clients;
    for (int i = 0; i < 30; ++i) {
        clients.push_back(std::make_unique<connection>(run.port));
        clients.back()->send(request);
        EXPECT_TRUE(clients.back()->read(12).ends_with("200"));
    }
    auto killed = std::make_unique<connection>(run.port);
    killed->send(request);
    EXPECT_TRUE(killed->read(12).ends_with("200"));
    event_reader events(run.port);
    events.next();
    EXPECT_EQ(status_in(answer_to(run.port, request)), 503);
    EXPECT_EQ(status_in(answer_to(run.port, "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n")), 200);
    // One reads a byte per second, the others do not read at all, and one is gone.
    std::jthread slow([&](const std::stop_token& stops) {
        while (!stops.stop_requested()) {
            clients.front()->read(1);
            std::this_thread::sleep_for(std::chrono::seconds(1));
        }
    });
    killed.reset();
    page_state page;
    page.read_to_end(events);
    expect_same_tables(folder / "tables", folder / "expected");
    // The next one finds the place of the one that is gone.
    EXPECT_TRUE(event_reader(run.port).header().starts_with("HTTP/1.1 200"));
    const auto start = clock::now();
    const result result = run.end();
    EXPECT_LT(seconds_since(start), 4.5); // a write to a stuck browser would last 5 s
    EXPECT_EQ(result.exit_code, 0);
    expect_contains(result.output, {"Key figures", "Output", "_samples.csv"});
}

TEST_F(watching, ends_at_once_while_others_send_slowly_or_without_end) {
    watched_run run(folder, "following.pcap");
    const std::string local = "GET / HTTP/1.1\r\nHost: localhost\r\n";
    const std::string chunk(65536, 'x');
    const connection flood(run.port);
    const long memory_kb = peak_memory_kb(run.process());
    std::size_t sent = 0;
    for (flood.send(local + "X: "); sent < (64U << 20U) && flood.send(chunk);)
        sent += chunk.size();
    EXPECT_LT(sent, 64U << 20U);
    EXPECT_GT(memory_kb, 0);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr long most_kb = 64'000; // sanitizers need 45'000
#else
    constexpr long most_kb = 32'000;
#endif
    EXPECT_LT(peak_memory_kb(run.process()) - memory_kb, most_kb);

    // Silent connections, even many of them, do not keep others waiting.
    std::vector<std::unique_ptr<connection>> silent;
    for (int i = 0; i < 60; ++i)
        silent.push_back(std::make_unique<connection>(run.port));
    auto start = clock::now();
    EXPECT_EQ(status_in(answer_to(run.port, local + "\r\n")), 200);
    EXPECT_LT(seconds_since(start), 4.0);

    const connection dripping(run.port);
    dripping.send(local + "X: ");
    const std::jthread drips([&](const std::stop_token& stops) {
        while (!stops.stop_requested() && dripping.send("x"))
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    start = clock::now();
    EXPECT_EQ(run.end().exit_code, 0);
    EXPECT_LT(seconds_since(start), 3.0);
}

TEST_F(watching, may_end_in_the_middle_of_a_capture_unless_it_writes_tables) {
    succeed("simulate run.pcap --duration 120");
    const auto interrupt = [this](const std::string& arguments) {
        watched_run run(folder, "run.pcap " + arguments);
        EXPECT_EQ(run.line(), "Decoding run.pcap\n");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return run.end();
    };
    // At full speed, nearly every moment is in the middle of a frame.
    const result shown = interrupt("--speed 0");
    EXPECT_EQ(shown.exit_code, 0);
    EXPECT_FALSE(contains(shown.output, "interrupted")) << shown.output;
    const result written = interrupt("-o tables");
    EXPECT_EQ(written.exit_code, 1);
    expect_contains(written.output, {"rtrange: interrupted in 'run.pcap' after frame "});
}

TEST_F(watching, shows_slow_readers_the_present) {
    succeed("simulate run.pcap --duration 20");
    watched_run run(folder, "run.pcap");
    const auto start = clock::now();
    const connection slow(run.port, 16384);
    slow.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
    std::string text;
    while (seconds_since(start) < 8) { // 50 kB/s
        std::this_thread::sleep_for(std::chrono::milliseconds(40));
        text += slow.read(2000);
    }
    const std::size_t now = text.rfind("\"now\":");
    ASSERT_NE(now, std::string::npos);
    EXPECT_LT(seconds_since(start) - std::atof(text.c_str() + now + 6), 5.0);
    run.end();
}

TEST_F(watching, writes_selected_fields_and_shows_them_beside_its_own) {
    const std::string selection = " --fields roll,range_lateral,accel_x --units hunter,target1";
    succeed("decode following.pcap -o expected --samples" + selection);
    watched_run run(folder, "following.pcap --speed 0 -o tables --samples" + selection);
    event_reader events(run.port);
    events.next();
    page_state page;
    page.read_to_end(events);
    expect_same_tables(folder / "tables", folder / "expected");
    EXPECT_EQ(page.rows.size(), 3U);
    const auto& hunter = page.rows.at({"hunter", "navigation"});
    EXPECT_TRUE(hunter.contains("roll") && hunter.contains("heading"));
    run.end();
}

TEST_F(watching, forgets_rows_when_time_runs_backwards) {
    write(folder / "twice.pcap", joined(content(example), content(example)));
    watched_run run(folder, "twice.pcap --speed 0");
    event_reader events(run.port);
    events.next();
    page_state page;
    page.read_to_end(events);
    event_reader later_events(run.port);
    later_events.next();
    page_state late;
    late.read_to_end(later_events);
    EXPECT_EQ(late.last["epoch"], 1);
    EXPECT_EQ(late.last["frames"], 520);
    EXPECT_TRUE(std::ranges::is_sorted(late.rows.at({"hunter", "navigation"}).at("time")));
    run.end();
}

TEST(row_ring, is_bounded_and_keeps_extremes_at_any_rate) {
    rtrange::row_ring ring(2, {[](std::span<const double> row) { return row[1]; }});
    const auto rows = [&](std::uint64_t after) {
        rtrange::numbered_rows result;
        ring.copy(after, std::numeric_limits<std::uint64_t>::max(), result);
        return result;
    };
    std::uint64_t number = 0;
    const auto add = [&](double time_s, double value) {
        ring.add(++number, std::array{time_s, value});
    };
    // Twenty minutes: the first, the last and the highest row of each fifth of a second.
    for (int i = 0; i < 1'200'000; ++i)
        add(i * 0.001, i % 200 == 77 ? 1.0 : std::nan(""));
    const auto kept = rows(0);
    EXPECT_LE(kept.numbers.size(), 3000U * 3 + 1024);
    EXPECT_NEAR(kept.values.front(), 600.0, 0.5);
    EXPECT_EQ(std::ranges::count(kept.values, 1.0), kept.values.front() < 600.0 ? 3001 : 3000);
    EXPECT_EQ(rows(number - 900).numbers.size(), 900U); // of the last second, all
    // A million rows within a moment.
    const std::uint64_t before = number;
    for (int i = 0; i < 1'000'000; ++i)
        add(1300.0, i == 345'678 ? 3.0 : 2.0);
    const auto moment = rows(before);
    EXPECT_LE(moment.numbers.size(), 1025U);
    EXPECT_EQ(std::ranges::count(moment.values, 3.0), 1);
    EXPECT_EQ(moment.numbers.front(), before + 1);
    EXPECT_EQ(moment.numbers.back(), number);
}

} // namespace
} // namespace rtrange_test
