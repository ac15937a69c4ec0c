// What the live page is told of a run.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/report/local_plane.hpp"
#include "tools/rtrange/report/row_streams.hpp"
#include "tools/rtrange/watch/row_ring.hpp"

namespace rtrange {

/// A run up to now.
struct run_status {
    std::uint64_t epoch = 0; ///< grows when earlier rows no longer count
    std::uint64_t frames = 0;
    std::uint64_t decoded = 0;
    std::uint64_t refused = 0;
    std::optional<std::uint64_t> zero_ns; ///< time of the first frame, since 1970
    known_addresses addresses{};          ///< of the units
    std::vector<std::string> notes;
    bool has_ended = false;
};

/// The packets of one kind that a unit has sent.
struct sender_status {
    stream_key stream;
    double last_s;                     ///< time of its last row
    std::int64_t second;               ///< of the last row
    std::array<std::uint64_t, 2> rows; ///< in the second before, and in that one
};

/// Rows of one stream.
struct stream_rows {
    stream_key stream;
    const std::vector<std::string>& columns; ///< valid as long as the history
    numbered_rows rows;
};

/// A part of the history.
struct history_part {
    run_status status;
    std::vector<sender_status> senders;
    std::vector<stream_rows> streams;
};

/// Keeps the last ten minutes of all streams. One thread adds to it; any may read.
class live_history {
public:
    /// `fields` are shown beside the default ones. The decoder must outlive the history.
    live_history(const frame_decoder& decoder, const std::vector<std::string>& fields);

    /// Takes a row of the current frame.
    void add(const table_row& row);

    /// Takes note that a frame has been decoded, and all of its rows have been added.
    void finish_frame(std::uint64_t time_ns);

    /// Takes note that the run has ended, and why, one line each.
    void end(const std::vector<std::string>& faults);

    /// Number of the newest row.
    std::uint64_t newest() const;

    /// The status, and the rows with numbers above `after` up to `last`.
    history_part part(std::uint64_t after, std::uint64_t last) const;

private:
    /// One stream, and the packets that brought its rows.
    struct shown_stream {
        std::vector<std::string> names;
        std::vector<report_column> columns;
        row_ring ring;
        sender_status sender;
    };

    shown_stream& stream_of(const stream_key& key, std::size_t table);
    void forget_rows();

    const frame_decoder& decoder_;
    std::vector<std::string> fields_;
    row_streams rows_;
    local_plane plane_;
    std::vector<double> values_; ///< of the current row
    std::chrono::steady_clock::time_point next_notes_;
    std::uint64_t latest_ns_ = 0; ///< time of the last row
    std::uint64_t restarts_ = 0;

    mutable std::mutex mutex_; ///< of all that follows
    run_status status_;
    std::uint64_t newest_ = 0;
    std::map<stream_key, std::unique_ptr<shown_stream>> streams_;
};

} // namespace rtrange
