#include "tools/rtrange/watch/listen_address.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <vector>

#include <fmt/format.h>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#endif

namespace rtrange {
namespace {

constexpr const char* localhost = "127.0.0.1";

/// A host, and the port behind it, as in a URL.
struct host_and_port {
    std::vector<std::uint8_t> address; ///< 4 or 16 bytes
    std::string host;                  ///< without brackets
    std::optional<int> port;
};

std::optional<int> parse_port(std::string_view text) {
    int port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc{} || end != text.data() + text.size() || port < 0 || port > 65535)
        return std::nullopt;
    return port;
}

bool is_localhost(std::string_view name) {
    return std::ranges::equal(name, std::string_view("localhost"), [](char given, char expected) {
        return (given >= 'A' && given <= 'Z' ? given - 'A' + 'a' : given) == expected;
    });
}

std::optional<host_and_port> parse_host(std::string_view text) {
    const bool in_brackets = text.starts_with('[');
    const std::size_t end = in_brackets ? text.find(']') : text.find(':');
    if (in_brackets && end == std::string_view::npos)
        return std::nullopt;
    host_and_port result;
    result.host = in_brackets ? text.substr(1, end - 1) : text.substr(0, end);
    if (is_localhost(result.host) && !in_brackets)
        result.host = localhost;
    result.address = bytes_of_ip_address(result.host);
    if (result.address.size() != (in_brackets ? 16 : 4))
        return std::nullopt;
    std::string_view rest = end == std::string_view::npos ? "" : text.substr(end);
    if (in_brackets)
        rest.remove_prefix(1);
    if (rest.empty())
        return result;
    result.port = parse_port(rest.substr(1));
    if (!rest.starts_with(':') || !result.port)
        return std::nullopt;
    return result;
}

bool is_loopback(const std::vector<std::uint8_t>& address) {
    return address.size() == 4 ? address[0] == 127 : address == bytes_of_ip_address("::1");
}

} // namespace

std::vector<std::uint8_t> bytes_of_ip_address(const std::string& text) {
    std::vector<std::uint8_t> bytes(sizeof(in_addr));
    if (inet_pton(AF_INET, text.c_str(), bytes.data()) == 1)
        return bytes;
    bytes.resize(sizeof(in6_addr));
    if (inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1)
        return bytes;
    return {};
}

std::optional<listen_address> parse_listen_address(std::string_view text) {
    const auto parsed = parse_host(text);
    if (!parsed || !parsed->port)
        return std::nullopt;
    return listen_address{parsed->host, *parsed->port};
}

std::string fault_of_listen_address(const std::string& text) {
    if (parse_listen_address(text))
        return {};
    return fmt::format("'{}' is not an IP address and a port, such as 127.0.0.1:8080 or [::1]:8080",
                       text);
}

std::string text_of(const listen_address& address) {
    const bool is_v6 = address.host.find(':') != std::string::npos;
    return fmt::format("{}{}{}:{}", is_v6 ? "[" : "", address.host, is_v6 ? "]" : "", address.port);
}

bool is_loopback(const listen_address& address) {
    return is_loopback(bytes_of_ip_address(address.host));
}

bool is_wildcard(const listen_address& address) {
    return std::ranges::all_of(bytes_of_ip_address(address.host),
                               [](std::uint8_t byte) { return byte == 0; });
}

listen_address local_address(const listen_address& address) {
    if (!is_wildcard(address))
        return address;
    const bool is_v6 = address.host.find(':') != std::string::npos;
    return {is_v6 ? "::1" : localhost, address.port};
}

bool accepts_host(const listen_address& address, std::string_view header) {
    const auto parsed = parse_host(header);
    return parsed && (is_loopback(parsed->address) || is_wildcard(address) ||
                      parsed->address == bytes_of_ip_address(address.host));
}

} // namespace rtrange
