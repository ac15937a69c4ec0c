// The address that a live page is served at.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rtrange {

/// An IP address and a TCP port.
struct listen_address {
    std::string host; ///< without brackets
    int port;         ///< 0 for any free one
};

/// The bytes of an IPv4 or IPv6 address, 4 or 16 in network order; none for other text.
std::vector<std::uint8_t> bytes_of_ip_address(const std::string& text);

/// Parses "127.0.0.1:8080", "[::1]:8080" or "localhost:8080". Returns nothing for other text.
std::optional<listen_address> parse_listen_address(std::string_view text);

/// A message that says what is wrong with an argument; empty if it is valid.
std::string fault_of_listen_address(const std::string& text);

/// "127.0.0.1:8080" or "[::1]:8080".
std::string text_of(const listen_address& address);

/// Whether only this machine can connect to the address.
bool is_loopback(const listen_address& address);

/// Whether the address stands for all addresses of this machine.
bool is_wildcard(const listen_address& address);

/// The address at which this machine's own browser reaches the page: for a wildcard, a loopback
/// one.
listen_address local_address(const listen_address& address);

/// Whether a request may have this Host header: the address itself, or this machine by any of its
/// loopback names; for a wildcard, any IP address. Other names could lead to a page of somebody
/// else, whose scripts would then read the run.
bool accepts_host(const listen_address& address, std::string_view header);

} // namespace rtrange
