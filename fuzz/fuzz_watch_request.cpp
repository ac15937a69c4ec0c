// One connection to the server of the live page, and the address that it listens on.

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <httplib.h>

#include "fuzz/input.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/watch/listen_address.hpp"
#include "tools/rtrange/watch/page_requests.hpp"
#include "tools/rtrange/watch/stream_server.hpp"

namespace {

using namespace rtrange;

constexpr std::string_view page_text = "<the page>";
constexpr std::string_view events_text = "event: start\n\n";

/// A connection in memory, from which at most `portion` bytes can be read at a time.
class memory_stream : public httplib::Stream {
public:
    memory_stream(std::string_view request, std::size_t portion)
        : rest_(request), portion_(portion) {}

    const std::string& answer() const { return answer_; }

    bool is_readable() const override { return !rest_.empty(); }
    bool is_writable() const override { return true; }

    ssize_t read(char* text, std::size_t most) override {
        const std::string_view part = rest_.substr(0, std::min(most, portion_));
        std::ranges::copy(part, text);
        rest_.remove_prefix(part.size());
        return static_cast<ssize_t>(part.size());
    }

    ssize_t write(const char* text, std::size_t size) override {
        answer_.append(text, size);
        return static_cast<ssize_t>(size);
    }

    void get_remote_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    void get_local_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    socket_t socket() const override { return INVALID_SOCKET; }

private:
    std::string_view rest_; ///< of the request
    std::size_t portion_;
    std::string answer_;
};

/// Works without a socket. The library writes a content only if the server's socket is valid.
class socketless_server : public stream_server {
public:
    socketless_server() { svr_sock_ = 0; }
};

std::unique_ptr<stream_server> server_at(const char* address) {
    auto server = std::make_unique<socketless_server>();
    answer_requests(*server, parse_listen_address(address).value(),
                    {[](httplib::Response& response) {
                         response.set_content_provider(
                             page_text.size(), "text/html; charset=utf-8",
                             [](std::size_t offset, std::size_t size, httplib::DataSink& browser) {
                                 return browser.write(page_text.data() + offset, size);
                             });
                     },
                     [](httplib::Response& response) {
                         response.set_content_provider(
                             "text/event-stream", [](std::size_t, httplib::DataSink& browser) {
                                 browser.write(events_text.data(), events_text.size());
                                 return false;
                             });
                     }});
    return server;
}

std::string answer_of(stream_server& server, std::string_view request, std::size_t portion) {
    memory_stream stream(request, portion);
    server.answer(stream);
    return stream.answer();
}

std::string lower_case(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return result;
}

/// Whether this Host value names this server: localhost, a loopback address, the address that it
/// listens on, or any address if it listens on all.
bool is_own_name(std::string_view host, const listen_address& address) {
    std::string name = lower_case(host);
    if (const auto port = name.find_last_of(':');
        name.find_last_of(']') + 1 == port || (port != std::string::npos && name[0] != '['))
        name.resize(port);
    if (name == "localhost")
        return true;
    if (name.starts_with('[') && name.ends_with(']'))
        name = name.substr(1, name.size() - 2);
    const auto bytes = bytes_of_ip_address(name);
    std::vector<std::uint8_t> loopback(16);
    loopback.back() = 1;
    return !bytes.empty() && (is_wildcard(address) || bytes[0] == 127 || bytes == loopback ||
                              bytes == bytes_of_ip_address(address.host));
}

/// Whether one of the lines is a Host header that may open the page. The library cuts values at a
/// zero byte, and decodes what follows percent signs, which no browser sends.
bool has_own_host(std::string_view request, const listen_address& address) {
    constexpr std::string_view header = "host:";
    while (!request.empty()) {
        const std::size_t end = std::min(request.find('\n'), request.size() - 1);
        std::string_view line = request.substr(0, end);
        request.remove_prefix(end + 1);
        if (lower_case(line.substr(0, header.size())) != header)
            continue;
        line.remove_prefix(header.size());
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        line = line.substr(0, line.find('\0'));
        line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
        if (line.find('%') != std::string_view::npos || is_own_name(line, address))
            return true;
    }
    return false;
}

/// The parts of a text between line ends.
std::vector<std::string_view> lines_of(std::string_view text) {
    constexpr std::string_view line_end = "\r\n";
    std::vector<std::string_view> lines;
    for (std::size_t at = text.find(line_end); at != std::string_view::npos;
         at = text.find(line_end)) {
        lines.push_back(text.substr(0, at));
        text.remove_prefix(at + line_end.size());
    }
    lines.push_back(text);
    return lines;
}

/// Whether a line is a header with a plain value that does not change the answer.
bool is_unused_header(std::string_view line) {
    const std::size_t colon = std::min(line.find(": "), line.size());
    const std::string name = lower_case(line.substr(0, colon));
    const auto is_letter = [](char character) {
        return (character >= 'a' && character <= 'z') || character == '-';
    };
    const auto is_plain = [](char character) {
        return character >= ' ' && character <= '~' && character != '%';
    };
    return colon > 0 && colon < line.size() && std::ranges::all_of(name, is_letter) &&
           std::ranges::all_of(line, is_plain) && name != "host" && name != "range";
}

/// The content that must be sent if the request is a usual one of a browser; empty for other
/// requests, which may be refused.
std::string_view required_content(std::string_view request, std::string_view own_host) {
    // Later versions of the library limit the number of headers.
    constexpr std::size_t largest = 512;
    const std::size_t end = request.find("\r\n\r\n");
    if (end > largest)
        return {};
    const std::vector<std::string_view> lines = lines_of(request.substr(0, end));
    int hosts = 0;
    for (const std::string_view line : std::span(lines).subspan(1))
        if (line == "Host: localhost:8080" || line == "Host: " + std::string(own_host))
            ++hosts;
        else if (!is_unused_header(line))
            return {};
    if (hosts == 1 && lines[0] == "GET / HTTP/1.1")
        return page_text;
    if (hosts == 1 && lines[0] == "GET /events HTTP/1.1")
        return events_text;
    return {};
}

struct answer_parts {
    int status;
    std::vector<std::string_view> headers;
    std::string_view content;
};

answer_parts parts_of(std::string_view answer) {
    const std::size_t end = answer.find("\r\n\r\n");
    EXPECT_NE(end, std::string_view::npos) << answer;
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 ")) << answer;
    std::vector<std::string_view> headers = lines_of(answer.substr(0, end));
    headers.erase(headers.begin());
    return {std::stoi(std::string(answer.substr(9, 3))), headers, answer.substr(end + 4)};
}

bool begins_with_any_of(std::string_view header, std::span<const char* const> starts) {
    return std::ranges::any_of(starts,
                               [header](const char* start) { return header.starts_with(start); });
}

void expect_headers(const answer_parts& parts) {
    constexpr std::array always{"Content-Security-Policy: default-src 'none'; ",
                                "X-Content-Type-Options: nosniff", "Referrer-Policy: no-referrer",
                                "Cache-Control: no-store"};
    constexpr std::array at_times{"Accept-Ranges: ",          "Allow: GET",
                                  "Connection: close",        "Content-Encoding: ",
                                  "Content-Length: ",         "Content-Type: text/event-stream",
                                  "Content-Type: text/html;", "Content-Type: text/plain"};
    const auto count = [&parts](std::string_view start) {
        return std::ranges::count_if(
            parts.headers, [start](std::string_view header) { return header.starts_with(start); });
    };
    for (const char* const header : always)
        EXPECT_EQ(count(header), 1) << header;
    EXPECT_EQ(count("Allow: GET"), parts.status == 405 ? 1 : 0) << parts.status;
    for (const std::string_view header : parts.headers)
        // No text of the request may appear in the answer.
        EXPECT_TRUE(begins_with_any_of(header, always) || begins_with_any_of(header, at_times))
            << header;
}

bool is_compressed(const answer_parts& parts) {
    return std::ranges::any_of(parts.headers, [](std::string_view header) {
        return header.starts_with("Content-Encoding: ");
    });
}

void expect_sound(std::string_view answer, std::string_view request,
                  const listen_address& address) {
    constexpr std::string_view interim = "HTTP/1.1 100 Continue\r\n\r\n";
    if (answer.starts_with(interim))
        answer.remove_prefix(interim.size());
    if (answer.empty()) {
        // Anything else, even half a line, is answered.
        EXPECT_TRUE(request.empty()) << request;
        return;
    }
    const answer_parts parts = parts_of(answer);
    expect_headers(parts);
    if (const auto required = required_content(request, text_of(address)); !required.empty()) {
        EXPECT_EQ(parts.status, 200) << request;
        EXPECT_EQ(parts.content, required) << request;
    }
    constexpr std::array statuses{200, 400, 403, 404, 405, 414, 416, 431};
    EXPECT_TRUE(std::ranges::find(statuses, parts.status) != statuses.end()) << answer;
    if (parts.status == 200) {
        // The library drops blanks before the method.
        const std::size_t start = std::min(request.find_first_not_of(" \t"), request.size());
        EXPECT_TRUE(request.substr(start).starts_with("GET")) << request;
        EXPECT_TRUE(has_own_host(request, address)) << request;
        EXPECT_TRUE(parts.content == page_text || parts.content == events_text) << parts.content;
    } else if (parts.status == 403 && !is_compressed(parts)) {
        EXPECT_TRUE(parts.content.empty() || (parts.content.starts_with("Open this page by the ") &&
                                              parts.content.ends_with(", not by a name.\n")))
            << parts.content;
    } else if (parts.status != 403) {
        EXPECT_TRUE(parts.content.empty()) << parts.content;
    }
}

/// The text as an argument of --listen and as a whole Host header.
void expect_sound_address(const std::string& text, const listen_address& address) {
    const auto parsed = parse_listen_address(text);
    const std::string fault = fault_of_listen_address(text);
    EXPECT_EQ(fault.empty(), parsed.has_value());
    EXPECT_EQ(std::ranges::count(fault, '\n'), parsed ? 0 : std::ranges::count(text, '\n'));
    EXPECT_LE(accepts_host(address, text), is_own_name(text, address)) << text;
    if (!parsed)
        return;
    const std::string printed = text_of(*parsed);
    const auto again = parse_listen_address(printed);
    ASSERT_TRUE(again.has_value()) << printed;
    EXPECT_EQ(text_of(*again), printed);
    EXPECT_EQ(again->port, parsed->port);
    EXPECT_TRUE(parsed->port >= 0 && parsed->port <= 65535);
    // A page can always be opened by the address that is printed for it.
    EXPECT_TRUE(accepts_host(*parsed, text_of(local_address(*parsed)))) << printed;
    EXPECT_TRUE(is_loopback(*parsed) || !is_loopback(local_address(*parsed)) ||
                is_wildcard(*parsed));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array addresses{"127.0.0.1:8080", "[::1]:8080", "0.0.0.0:80",
                                          "192.0.2.1:8080"};
    static const std::array servers{server_at(addresses[0]), server_at(addresses[1]),
                                    server_at(addresses[2]), server_at(addresses[3])};
    fuzz::input input({data, size});
    const std::size_t which = input.byte() % addresses.size();
    const std::size_t portion = 1U + input.byte();
    const listen_address address = parse_listen_address(addresses[which]).value();
    const std::vector<std::uint8_t> rest = input.take(size);
    const std::string request(rest.begin(), rest.end());
    expect_sound_address(request, address);
    const std::string answer = answer_of(*servers[which], request, portion);
    expect_sound(answer, request, address);
    EXPECT_EQ(answer_of(*servers[which], request, request.size() + 4096), answer);
    return 0;
}
