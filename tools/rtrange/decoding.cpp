#include "tools/rtrange/decoding.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <system_error>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/progress_bar.hpp"

namespace rtrange {

decoding::decoding(const run_options& options)
    : selection_(options.selection), plugin_(options.plugin),
      services_([this](const zel_log_info_t& record) { fates_.log(record); }),
      instance_(plugin_.formatter(options.format), services_),
      wrap_(options.format == zel::host::recorder_frame_type ? &zel::host::wrap_recorder_frame
                                                             : &zel::host::wrap_ethernet_frame) {}

void decoding::decode(const captured_frame& frame, record_output& output) {
    if (fates_.frames == 0)
        selection_.begin_run(frame.time_ns);
    fates_.begin_frame(frame);
    wrap_(frame.bytes, raw_package_);
    raw_package_.package().reference_timestamp = frame.time_ns;
    const auto packages = instance_.transform(raw_package_.package());
    rows_of(packages, rows_);
    for (const record_row& row : rows_)
        if (selection_.contains(row))
            output.write(row);
    fates_.end_frame(frame, rows_.size());
}

std::vector<capture_reader> open_captures(const std::vector<std::filesystem::path>& captures) {
    std::vector<capture_reader> readers;
    readers.reserve(captures.size());
    for (const auto& file : captures)
        readers.emplace_back(file);
    if (!readers.empty() && std::ranges::none_of(readers, &capture_reader::has_frames)) {
        readers.front().next(); // which throws if there is more than nothing
        throw failure(fmt::format("there are no frames in '{}'", captures.front().string()));
    }
    return readers;
}

void check_output(const std::filesystem::path& output,
                  const std::vector<std::filesystem::path>& captures) {
    for (const auto& capture : captures) {
        std::error_code ignored;
        if (std::filesystem::equivalent(output, capture, ignored))
            throw usage_failure(
                fmt::format("'{}' is the capture; give the output another name", output.string()));
    }
}

namespace {

void decode_capture(capture_reader& capture, decoding& run, record_output& output) {
    constexpr std::uint64_t frames_per_update = 1024;
    const std::filesystem::path& file = capture.path();
    std::printf("Decoding %s\n", file.string().c_str()); // whether or not anybody reads it
    std::fflush(stdout);
    std::error_code unknown_size;
    const std::uintmax_t size = std::filesystem::file_size(file, unknown_size);
    progress_bar progress(fmt::format("Decoding {}", file.filename().string()),
                          unknown_size ? 0 : size);
    std::uint64_t frames = 0;
    while (const auto frame = capture.next()) {
        run.decode(*frame, output);
        if (++frames % frames_per_update != 0)
            continue;
        progress.update(capture.position());
        if (interrupted())
            throw broken_capture(
                fmt::format("interrupted in '{}' after frame {}", file.string(), frames));
    }
}

} // namespace

std::vector<std::string> decode_captures(std::vector<capture_reader>& captures, decoding& run,
                                         record_output& output) {
    std::vector<std::string> faults;
    for (capture_reader& capture : captures) {
        if (interrupted())
            break;
        try {
            decode_capture(capture, run, output);
        } catch (const broken_capture& error) {
            faults.emplace_back(error.what());
        }
    }
    return faults;
}

} // namespace rtrange
