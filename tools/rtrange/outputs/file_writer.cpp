#include "tools/rtrange/outputs/file_writer.hpp"

#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"

namespace rtrange {
namespace {

/// Buffers that may be queued.
constexpr std::size_t longest_queue = 8;

} // namespace

file_writer::file_writer() {
    try {
        thread_ = std::thread([this] { work(); });
    } catch (const std::system_error& error) {
        throw failure(fmt::format("cannot start a thread that writes the output files: {}",
                                  error.code().message()));
    }
}

file_writer::~file_writer() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void file_writer::append(output_file& file, std::vector<char>& buffer, std::size_t size) {
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return jobs_.size() < longest_queue; });
        check();
        jobs_.push_back({&file, std::move(buffer), size});
        if (free_buffers_.empty())
            free_buffers_.emplace_back(buffer_size);
        buffer = std::move(free_buffers_.back());
        free_buffers_.pop_back();
    }
    changed_.notify_all();
}

void file_writer::finish() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty(); });
    check();
}

void file_writer::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return !jobs_.empty() || ending_; });
        if (jobs_.empty())
            return;
        job& first = jobs_.front(); // stays valid while others are appended
        lock.unlock();
        const std::exception_ptr fault = write(first);
        lock.lock();
        if (fault_ == nullptr)
            fault_ = fault;
        free_buffers_.push_back(std::move(first.buffer));
        jobs_.pop_front();
        changed_.notify_all();
    }
}

std::exception_ptr file_writer::write(const job& first) {
    try {
        first.file->write({first.buffer.data(), first.size});
        return nullptr;
    } catch (const failure&) {
        return std::current_exception();
    }
}

void file_writer::check() const {
    if (fault_ != nullptr)
        std::rethrow_exception(fault_);
}

} // namespace rtrange
