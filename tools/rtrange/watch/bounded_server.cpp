#include "tools/rtrange/watch/bounded_server.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

#include <httplib.h>

#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/watch/stream_server.hpp"

namespace rtrange {
namespace {

using clock = std::chrono::steady_clock;

#ifdef _WIN32
using transfer_size = int; // of the functions recv and send
#else
using transfer_size = std::size_t;
#endif

constexpr std::size_t largest_request = 16384;
constexpr std::chrono::milliseconds longest_wait_for_first_byte(500);
constexpr std::chrono::seconds longest_wait_for_request(2);
constexpr std::chrono::seconds patience_with_readers(5);
/// Between looks at whether the server stops.
constexpr std::chrono::milliseconds interval_of_looks(100);

/// When the connection that this thread answers was accepted. Those who say nothing are then
/// closed at once when their turn comes, however many they are.
thread_local clock::time_point accepted_at;

/// The jobs of a server, done by threads of its own.
class job_queue : public httplib::TaskQueue {
public:
    using job = std::function<void()>;
    /// Some versions of the library want to know whether the job was taken.
    using enqueued = decltype(std::declval<httplib::TaskQueue&>().enqueue(job()));

    explicit job_queue(int threads) {
        for (int i = 0; i < threads; ++i)
            threads_.emplace_back([this](const std::stop_token& stops) { work(stops); });
    }

    /// Waits for room, so that connections queue where they cost no descriptor.
    enqueued enqueue(job next) override {
        constexpr std::size_t most_jobs = 64;
        std::unique_lock lock(mutex_);
        changes_.wait(lock, [this] { return jobs_.size() < most_jobs; });
        jobs_.emplace_back(clock::now(), std::move(next));
        changes_.notify_all();
        return static_cast<enqueued>(true);
    }

    /// Returns when all jobs are done.
    void shutdown() override {
        for (std::jthread& thread : threads_)
            thread.request_stop();
        threads_.clear();
    }

private:
    void work(const std::stop_token& stops) {
        std::unique_lock lock(mutex_);
        while (changes_.wait(lock, stops, [this] { return !jobs_.empty(); })) {
            const auto [time, next] = std::move(jobs_.front());
            jobs_.pop_front();
            accepted_at = time;
            changes_.notify_all();
            lock.unlock();
            next();
            lock.lock();
        }
    }

    std::mutex mutex_; ///< of the jobs
    std::condition_variable_any changes_;
    std::deque<std::pair<clock::time_point, job>> jobs_;
    std::vector<std::jthread> threads_; ///< the last member, as they use the others
};

/// A connection that ends when its limits are exceeded, or when the server stops.
class bounded_stream : public httplib::Stream {
public:
    using stop_check = std::function<bool()>;

    bounded_stream(socket_t socket, stop_check is_stopping)
        : socket_(socket), is_stopping_(std::move(is_stopping)) {}

    bool is_readable() const override { return begin_ < end_ || wait_for_more(); }

    ssize_t read(char* text, std::size_t most) override {
        if (begin_ == end_) {
            if (received_ >= largest_request || !wait_for_more())
                return -1;
            const std::size_t room = std::min(buffer_.size(), largest_request - received_);
            const auto size = ::recv(socket_, buffer_.data(), static_cast<transfer_size>(room), 0);
            if (size <= 0)
                return size;
            begin_ = 0;
            end_ = static_cast<std::size_t>(size);
            received_ += end_;
        }
        const std::size_t size = std::min(most, end_ - begin_);
        std::copy_n(buffer_.data() + begin_, size, text);
        begin_ += size;
        return static_cast<ssize_t>(size);
    }

    bool is_writable() const override {
        for (const auto start = clock::now(); !is_stopping_();) {
            if (wait_to_write(handle(), interval_of_looks))
                return true;
            if (clock::now() - start > patience_with_readers || is_gone())
                return false;
        }
        return false;
    }

    /// Takes a portion at a time, for which there is room when there is any.
    ssize_t write(const char* text, std::size_t size) override {
        constexpr std::size_t portion = 4096;
        if (!is_writable())
            return -1;
        return ::send(socket_, text, static_cast<transfer_size>(std::min(size, portion)),
                      CPPHTTPLIB_SEND_FLAGS);
    }

    void get_remote_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    void get_local_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    socket_t socket() const override { return socket_; }

private:
    std::intptr_t handle() const { return static_cast<std::intptr_t>(socket_); }

    bool is_gone() const {
        char next = 0;
        return wait_to_read(handle(), {}) && ::recv(socket_, &next, 1, MSG_PEEK) <= 0;
    }

    /// What has arrived may be read even if it is late, so that busy threads refuse nobody.
    bool wait_for_more() const {
        const clock::time_point end =
            start_ + (received_ == 0 ? clock::duration(longest_wait_for_first_byte)
                                     : clock::duration(longest_wait_for_request));
        while (!is_stopping_()) {
            const auto left = std::clamp(
                std::chrono::duration_cast<std::chrono::milliseconds>(end - clock::now()),
                std::chrono::milliseconds::zero(), interval_of_looks);
            if (wait_to_read(handle(), left))
                return true;
            if (left.count() == 0)
                return false;
        }
        return false;
    }

    socket_t socket_;
    stop_check is_stopping_;
    clock::time_point start_ = accepted_at;
    std::array<char, 4096> buffer_{};
    std::size_t begin_ = 0; ///< what has been received but not read: from here ...
    std::size_t end_ = 0;   ///< ... to here in the buffer
    std::size_t received_ = 0;
};

class bounded_server : public stream_server {
private:
    bool process_and_close_socket(socket_t socket) override {
        bool is_answered = false;
        try {
            bounded_stream stream(socket, [this] { return svr_sock_ == INVALID_SOCKET; });
            is_answered = answer(stream);
        } catch (...) { // mostly for want of memory: the browser asks again
        }
        close_connection(static_cast<std::intptr_t>(socket));
        return is_answered;
    }
};

} // namespace

std::unique_ptr<httplib::Server> make_bounded_server(int threads) {
    auto server = std::make_unique<bounded_server>();
    server->new_task_queue = [threads] {
        return new job_queue(threads); // which the server deletes
    };
    // No call shall wait for long where a readiness turns out to be wrong.
    server->set_read_timeout(0, 200'000);
    server->set_write_timeout(0, 200'000);
    return server;
}

} // namespace rtrange
