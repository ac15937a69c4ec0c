// Formatting and writing of CSV files on a second thread.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "tools/rtrange/outputs/csv_file.hpp"

namespace rtrange {

/// Appends rows to any number of files on a thread of its own, because formatting and writing the
/// text of a run takes about as long as decoding it.
class csv_writer {
public:
    /// Starts the thread. Throws failure when the system does not permit another one.
    csv_writer();
    csv_writer(const csv_writer&) = delete;
    csv_writer& operator=(const csv_writer&) = delete;
    /// Waits until everything appended has been written.
    ~csv_writer();

    /// Appends the rows, whose cells lie one after the other, to a file, which must not be used
    /// otherwise until finish(). Leaves `cells` empty. Waits while 8 blocks of rows are queued.
    /// Throws what an earlier write has thrown: failure, or std::bad_alloc.
    void append(csv_file& file, std::vector<cell>& cells);

    /// Waits until everything is written. Throws what a write has thrown.
    void finish();

private:
    struct job {
        csv_file* file;
        std::vector<cell> cells;
    };

    void work();
    static std::exception_ptr write(const job& first);
    void check() const;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<job> jobs_;                       ///< the first one is being written
    std::vector<std::vector<cell>> free_blocks_; ///< at most its capacity: adding cannot fail
    std::exception_ptr fault_;                   ///< of the first write that failed
    bool ending_ = false;
    std::thread thread_;
};

} // namespace rtrange
