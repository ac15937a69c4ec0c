// How files show that rtrange has written them.
#pragma once

#include <filesystem>

namespace rtrange {

/// A kind of file that rtrange writes.
struct file_kind {
    const char* description; ///< with article, for messages: "a report of rtrange"
    bool (*recognises)(const std::filesystem::path& file); ///< false also if it cannot be read
};

/// A page that names rtrange as its generator.
extern const file_kind report_page_file;

/// An HDF5 file that names rtrange as its creator.
extern const file_kind hdf5_file;

/// A JSON file whose first member is that of summaries.
extern const file_kind summary_file;
/// A MAT file that names rtrange as its creator.
extern const file_kind mat_file;

/// A capture whose first frame is the hunter's at the simulator's start time, to the nanosecond.
extern const file_kind simulated_capture_file;

} // namespace rtrange
