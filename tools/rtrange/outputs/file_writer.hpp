// Writing of files on a second thread.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "tools/rtrange/outputs/output_file.hpp"

namespace rtrange {

/// Writes to any number of files on a thread of its own, because writing the text of a run takes
/// about half as long as producing it.
class file_writer {
public:
    static constexpr std::size_t buffer_size = 1 << 18;

    /// Starts the thread. Throws failure when the system does not permit another one.
    file_writer();
    file_writer(const file_writer&) = delete;
    file_writer& operator=(const file_writer&) = delete;
    /// Waits until everything appended has been written.
    ~file_writer();

    /// Appends the first `size` bytes of the buffer to a file, which must not be used otherwise
    /// until finish(). Replaces the buffer by another one of at least buffer_size bytes. Waits
    /// while 8 buffers are queued. Throws failure when an earlier write has failed.
    void append(output_file& file, std::vector<char>& buffer, std::size_t size);

    /// Waits until everything is written. Throws failure when a write has failed.
    void finish();

private:
    struct job {
        output_file* file;
        std::vector<char> buffer;
        std::size_t size;
    };

    void work();
    static std::exception_ptr write(const job& first);
    void check() const;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<job> jobs_; ///< the first one is being written
    std::vector<std::vector<char>> free_buffers_;
    std::exception_ptr fault_; ///< of the first write that failed
    bool ending_ = false;
    std::thread thread_;
};

} // namespace rtrange
