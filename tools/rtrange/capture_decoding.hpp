// Decoding of captures.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/rtrange/captures/capture_reader.hpp"
#include "tools/rtrange/frame_decoder.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/run_follower.hpp"

namespace rtrange {

/// Opens all captures, in the order of their first frames. Called before any output is created, so
/// that a wrong file name does not overwrite an earlier result. Throws failure when a file is not a
/// capture, or when there is no frame in any of them.
std::vector<capture_reader> open_captures(const std::vector<std::filesystem::path>& captures);

/// Throws usage_failure when the output file is one of the captures.
void check_output(const std::filesystem::path& output,
                  const std::vector<std::filesystem::path>& captures);

/// Decodes the captures one after the other, as one run, until the end or an interruption. Returns
/// what kept it from reading them to their end, one line each. Throws failure when one begins
/// before the end of the others. With a follower, there is no progress bar.
std::vector<std::string> decode_captures(std::vector<capture_reader>& captures,
                                         frame_decoder& decoder, table_output& output,
                                         run_follower* follower = nullptr);

} // namespace rtrange
