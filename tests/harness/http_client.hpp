// A client of the live page that writes what it likes, and reads as slowly as it likes.
#pragma once

#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace rtrange_test {

/// A TCP connection to this machine.
class connection {
public:
    /// With a size, the system holds back about so many bytes that have not been read.
    explicit connection(int port, int receive_buffer_size = 0)
        : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        if (receive_buffer_size > 0)
            ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer_size,
                         sizeof(receive_buffer_size));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
                  0);
        const timeval patience{20, 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    }
    connection(const connection&) = delete;
    connection& operator=(const connection&) = delete;
    ~connection() { ::close(socket_); }

    /// Returns false when the other side reads no more.
    bool send(const std::string& text) const {
        for (std::size_t at = 0; at < text.size();) {
            const auto sent = ::send(socket_, text.data() + at, text.size() - at, MSG_NOSIGNAL);
            if (sent <= 0)
                return false;
            at += static_cast<std::size_t>(sent);
        }
        return true;
    }

    /// At most so many bytes; none at the end.
    std::string read(std::size_t most = 65536) const {
        std::string text(most, '\0');
        const auto size = ::recv(socket_, text.data(), text.size(), 0);
        text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return text;
    }

private:
    int socket_;
};

/// Everything that is answered to a request within half a minute.
inline std::string answer_to(int port, const std::string& request) {
    const connection connection(port);
    connection.send(request);
    std::string answer;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (std::string part = connection.read(); !part.empty(); part = connection.read()) {
        answer += part;
        if (std::chrono::steady_clock::now() > end)
            break; // it goes on for ever
    }
    return answer;
}

/// The status of an answer; 0 if the connection was closed without one.
inline int status_in(const std::string& answer) {
    return answer.size() > 12 ? std::atoi(answer.c_str() + 9) : 0;
}

/// Reads the events of the live page.
class event_reader {
public:
    explicit event_reader(int port) : connection_(port) {
        connection_.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
        header_ = part_until("\r\n\r\n");
    }

    const std::string& header() const { return header_; }

    /// The name and the data of the next event.
    std::pair<std::string, nlohmann::json> next() {
        const std::string text = part_until("\n\n");
        const std::size_t data = text.find("\ndata: ");
        if (!text.starts_with("event: ") || data == std::string::npos) {
            ADD_FAILURE() << "not an event: " << text;
            return {};
        }
        return {text.substr(7, data - 7), nlohmann::json::parse(text.substr(data + 7))};
    }

private:
    std::string part_until(const std::string& separator) {
        std::size_t at = 0;
        while ((at = buffer_.find(separator)) == std::string::npos) {
            const std::string part = connection_.read();
            if (part.empty())
                return {};
            buffer_ += part;
        }
        std::string part = buffer_.substr(0, at);
        buffer_.erase(0, at + separator.size());
        return part;
    }

    connection connection_;
    std::string buffer_;
    std::string header_;
};

/// The columns of a stream by name. NaN for null.
using stream_columns = std::map<std::string, std::vector<std::optional<double>>>;

/// What a page knows after the updates so far.
struct page_state {
    nlohmann::json last;                                                ///< the last update
    std::map<std::pair<std::string, std::string>, stream_columns> rows; ///< by unit and kind
    int updates = 0;

    void take(nlohmann::json update) {
        if (!last.is_null() && update["epoch"] != last["epoch"])
            rows.clear();
        for (const auto& stream : update["streams"]) {
            auto& columns = rows[{stream["unit"], stream["kind"]}];
            for (std::size_t i = 0; i < stream["columns"].size(); ++i)
                for (const auto& value : stream["values"][i])
                    columns[stream["columns"][i]].push_back(
                        value.is_null() ? std::nullopt : std::optional(value.get<double>()));
        }
        last = std::move(update);
        ++updates;
    }

    /// Reads updates until the run has ended and everything has been sent.
    void read_to_end(event_reader& events) {
        do {
            auto [name, data] = events.next();
            if (name != "update")
                return ADD_FAILURE() << "'" << name << "' instead of an update";
            take(std::move(data));
        } while (last["state"] != "ended" || !last["streams"].empty());
    }
};

} // namespace rtrange_test
