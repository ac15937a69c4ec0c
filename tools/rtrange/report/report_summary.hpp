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

/// A script element with JSON: the outcomes of the frames, the units, the streams and their
/// columns. Times are in seconds from `zero_ns`, like those of the rows.
/// No text in it can end the element.
std::string report_summary(const frame_outcomes& outcomes, std::uint64_t zero_ns,
                           const std::vector<std::filesystem::path>& captures, bool named_fields,
                           const std::vector<std::unique_ptr<report_stream>>& streams);

} // namespace rtrange
