// The summary of a run for the page.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tools/rtrange/frame_outcomes.hpp"
#include "tools/rtrange/report/report_stream.hpp"

namespace rtrange {

/// What the page says about the run as a whole.
struct report_header {
    std::vector<std::filesystem::path> captures;
    std::string view;               ///< "measured" or "record"
    std::vector<std::string> notes; ///< sentences about faults of the run
    bool named_fields;              ///< whether the plots are those of selected fields
};

/// A script element with JSON: the header, the outcomes of the frames, the units, the streams and
/// their columns, the names of coded values, and the key figures. Times are in seconds from
/// `zero_ns`, like those of the rows. No text in it can end the element.
std::string report_summary(const frame_outcomes& outcomes, std::uint64_t zero_ns,
                           const report_header& header,
                           const std::vector<std::unique_ptr<report_stream>>& streams);

} // namespace rtrange
