#include "tools/rtrange/outputs/csv_writer.hpp"

#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"

namespace rtrange {
namespace {

/// Blocks of rows that may be queued.
constexpr std::size_t longest_queue = 8;

} // namespace

csv_writer::csv_writer() {
    free_blocks_.reserve(longest_queue + 1);
    try {
        thread_ = std::thread([this] { work(); });
    } catch (const std::system_error& error) {
        throw failure(fmt::format("cannot start a thread that writes the output files: {}",
                                  error.code().message()));
    }
}

csv_writer::~csv_writer() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void csv_writer::append(csv_file& file, std::vector<cell>& cells) {
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return jobs_.size() < longest_queue; });
        check();
        jobs_.push_back({&file, std::move(cells)});
        cells.clear();
        if (!free_blocks_.empty()) {
            cells = std::move(free_blocks_.back());
            free_blocks_.pop_back();
        }
    }
    changed_.notify_all();
}

void csv_writer::finish() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty(); });
    check();
}

void csv_writer::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return !jobs_.empty() || ending_; });
        if (jobs_.empty())
            return;
        job& first = jobs_.front(); // stays valid while others are appended
        lock.unlock();
        const std::exception_ptr fault = write(first);
        first.cells.clear();
        lock.lock();
        if (fault_ == nullptr)
            fault_ = fault;
        free_blocks_.push_back(std::move(first.cells));
        jobs_.pop_front();
        changed_.notify_all();
    }
}

std::exception_ptr csv_writer::write(const job& first) {
    try {
        first.file->write(first.cells);
        return nullptr;
    } catch (...) { // a failure, or no memory
        return std::current_exception();
    }
}

void csv_writer::check() const {
    if (fault_ != nullptr)
        std::rethrow_exception(fault_);
}

} // namespace rtrange
