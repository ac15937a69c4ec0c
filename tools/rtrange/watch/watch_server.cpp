#include "tools/rtrange/watch/watch_server.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <httplib.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/watch/bounded_server.hpp"
#include "tools/rtrange/watch/page_requests.hpp"
#include "tools/rtrange/watch/watch_page.hpp"

namespace rtrange {
namespace {

using clock = std::chrono::steady_clock;

constexpr int most_streams = 32;
/// Beside the streams, for pages and refusals.
constexpr int further_threads = 8;

std::string reason_not_to_listen(const listen_address& address) {
    const std::error_code error = last_socket_error();
    if (error == std::errc::address_in_use)
        return fmt::format("port {} of {} is in use; choose another one, or port 0 for a free one, "
                           "with --listen",
                           address.port, address.host);
    if (error == std::errc::address_not_available)
        return fmt::format("{} is not an address of this machine; choose one that is with --listen",
                           address.host);
    if (error == std::errc::permission_denied)
        return fmt::format("port {} is reserved; choose one above 1023 with --listen",
                           address.port);
    return fmt::format("cannot listen on {}: {}", text_of(address), error.message());
}

} // namespace

watch_server::watch_server(const listen_address& address, update_feed& feed)
    : address_(address), feed_(feed), server_(make_bounded_server(most_streams + further_threads)) {
    server_->set_socket_options(
        [](auto socket) { prepare_listening_socket(static_cast<std::intptr_t>(socket)); });
    server_->set_tcp_nodelay(true);
    if (address_.port != 0 ? !server_->bind_to_port(address_.host, address_.port)
                           : (address_.port = server_->bind_to_any_port(address_.host)) < 0)
        throw failure(reason_not_to_listen(address));
    answer_requests(*server_, address_,
                    {[this](auto& response) { answer_with_page(response); },
                     [this](auto& response) { answer_with_events(response); }});
}

watch_server::~watch_server() {
    {
        const std::scoped_lock lock(mutex_);
        is_stopping_ = true;
    }
    stops_.notify_all();
    server_->stop();
    if (thread_.joinable())
        thread_.join();
}

void watch_server::start() {
    thread_ = std::thread([this] {
        try {
            server_->listen_after_bind();
        } catch (...) { // for want of memory or threads: the run goes on without its page
        }
        has_ended_ = true;
    });
    // A server that does not run yet cannot be stopped.
    while (!server_->is_running() && !has_ended_)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void watch_server::answer_with_page(httplib::Response& response) {
    response.set_content_provider(
        watch_page().size(), "text/html; charset=utf-8",
        [this](std::size_t offset, std::size_t size, httplib::DataSink& browser) {
            return send(browser, watch_page().substr(offset, size));
        });
}

void watch_server::answer_with_events(httplib::Response& response) {
    // Counts the stream until the server destroys the last copy of the function.
    const std::shared_ptr<void> counted(nullptr, [this](void*) { --streams_; });
    if (++streams_ > most_streams) {
        response.status = 503;
        return;
    }
    response.set_content_provider("text/event-stream",
                                  [this, counted](std::size_t, httplib::DataSink& browser) {
                                      send_events(browser);
                                      return false; // ends the connection
                                  });
}

void watch_server::send_events(httplib::DataSink& browser) {
    constexpr std::chrono::milliseconds longest_silence(200);
    if (!send(browser, feed_.start()))
        return;
    std::uint64_t last = 0;
    clock::time_point next_sign_of_life;
    do {
        const auto update = feed_.next(last);
        if (update->last == last && clock::now() < next_sign_of_life)
            continue;
        if (!send(browser, update->text))
            return;
        last = update->last;
        next_sign_of_life = clock::now() + longest_silence;
    } while (pause());
}

/// Returns false when the browser is gone, or is to be disconnected.
bool watch_server::send(httplib::DataSink& browser, std::string_view text) {
    return browser.write(text.data(), text.size()) && !is_stopping();
}

/// Waits for the next update. Returns false when the server stops.
bool watch_server::pause() {
    std::unique_lock lock(mutex_);
    return !stops_.wait_for(lock, update_feed::interval, [this] { return is_stopping_; });
}

bool watch_server::is_stopping() {
    const std::scoped_lock lock(mutex_);
    return is_stopping_;
}

} // namespace rtrange
