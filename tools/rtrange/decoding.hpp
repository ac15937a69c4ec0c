// A run through the plug-in.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "tools/rtrange/captures/capture_reader.hpp"
#include "tools/rtrange/frame_fates.hpp"
#include "tools/rtrange/outputs/record_output.hpp"
#include "tools/rtrange/tables/selection.hpp"

namespace rtrange {

/// Arguments of all commands that decode.
struct run_options {
    std::vector<std::filesystem::path> captures;
    std::string format = "zel.rtrange"; ///< the raw packages to wrap the frames in
    std::filesystem::path plugin;
    selection_options selection;
};

/// Drives one instance of the plug-in, frame by frame.
class decoding {
public:
    /// Throws host_error when the plug-in cannot be used.
    explicit decoding(const run_options& options);

    /// Decodes a frame and writes the selected ones of its rows. Throws failure when they cannot be
    /// written.
    void decode(const captured_frame& frame, record_output& output);

    const rtrange::selection& selection() const { return selection_; }
    const frame_fates& fates() const { return fates_; }

private:
    using wrap_function = void (*)(std::span<const std::uint8_t>, zel::host::raw_package_buffer&);

    rtrange::selection selection_;
    frame_fates fates_;
    zel::host::plugin plugin_;
    zel::host::host_services services_;
    zel::host::formatter_instance instance_;
    wrap_function wrap_;
    zel::host::raw_package_buffer raw_package_;
    std::vector<record_row> rows_;
};

/// Opens all captures before anything is written, so that a wrong name costs nobody an earlier
/// result. Throws failure when one of the files is no capture, or none of them has a frame.
std::vector<capture_reader> open_captures(const std::vector<std::filesystem::path>& captures);

/// Throws usage_failure when the output would take the place of one of the captures.
void check_output(const std::filesystem::path& output,
                  const std::vector<std::filesystem::path>& captures);

/// Decodes the captures one after the other, as one run, until the end or an interruption. Gives
/// what kept it from reading all of them to their end, one line each.
std::vector<std::string> decode_captures(std::vector<capture_reader>& captures, decoding& run,
                                         record_output& output);

} // namespace rtrange
