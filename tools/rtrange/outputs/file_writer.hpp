// Writing beside other work.
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

/// Writes to any number of files, on a thread of its own: the system takes half as long to take the
/// text of a run as it takes to make it.
class file_writer {
public:
    static constexpr std::size_t buffer_size = 1 << 18;

    file_writer();
    file_writer(const file_writer&) = delete;
    file_writer& operator=(const file_writer&) = delete;
    /// Waits for what has been appended.
    ~file_writer();

    /// Appends the first `size` bytes of the buffer to a file, which nobody else may use until
    /// finish(), and puts another buffer of at least buffer_size in the place of this one. Waits
    /// when much is still to be written. Throws failure when an earlier append came to nothing.
    void append(output_file& file, std::vector<char>& buffer, std::size_t size);

    /// Waits until all is written. Throws failure when something could not be.
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
    std::deque<job> jobs_; ///< the first of them is being written
    std::vector<std::vector<char>> free_buffers_;
    std::exception_ptr fault_; ///< of the first write that failed
    bool ending_ = false;
    std::thread thread_; // started when all else is there
};

} // namespace rtrange
