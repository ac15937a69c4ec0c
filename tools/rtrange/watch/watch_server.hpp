// The server of the live page.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

#include "tools/rtrange/watch/listen_address.hpp"
#include "tools/rtrange/watch/update_feed.hpp"

namespace httplib {
class DataSink;
struct Response;
class Server;
} // namespace httplib

namespace rtrange {

/// Serves the page and its events, and nothing else, by threads of its own.
class watch_server {
public:
    /// Begins to listen; answers come after start(). Throws failure when the address cannot be
    /// listened on. The feed must outlive the server.
    watch_server(const listen_address& address, update_feed& feed);
    /// Disconnects all browsers.
    ~watch_server();
    watch_server(const watch_server&) = delete;
    watch_server& operator=(const watch_server&) = delete;

    /// Answers requests until the destructor.
    void start();

    /// The address with the port that is listened on.
    const listen_address& address() const { return address_; }

private:
    void answer_with_page(httplib::Response& response);
    void answer_with_events(httplib::Response& response);
    void send_events(httplib::DataSink& browser);
    bool send(httplib::DataSink& browser, std::string_view text);
    bool pause();
    bool is_stopping();

    listen_address address_;
    update_feed& feed_;
    std::unique_ptr<httplib::Server> server_;
    std::thread thread_;
    std::atomic<bool> has_ended_ = false;
    std::atomic<int> streams_ = 0; ///< browsers that are sent events
    std::mutex mutex_;             ///< of all that follows
    std::condition_variable stops_;
    bool is_stopping_ = false;
};

} // namespace rtrange
