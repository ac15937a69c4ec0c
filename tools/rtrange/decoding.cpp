#include "tools/rtrange/decoding.hpp"

#include <cstdint>
#include <cstdio>

#include <fmt/format.h>

#include "tools/rtrange/captures/capture_reader.hpp"
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

void check_captures(const std::vector<std::filesystem::path>& captures) {
    for (const auto& file : captures)
        capture_reader{file};
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

void decode_capture(const std::filesystem::path& file, decoding& run, record_output& output) {
    constexpr std::uint64_t frames_per_update = 1024;
    std::printf("Decoding %s\n", file.string().c_str()); // whether or not anybody reads it
    std::fflush(stdout);
    capture_reader capture(file);
    std::error_code ignored;
    progress_bar progress(fmt::format("Decoding {}", file.filename().string()),
                          std::filesystem::file_size(file, ignored));
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

std::vector<std::string> decode_captures(const std::vector<std::filesystem::path>& captures,
                                         decoding& run, record_output& output) {
    std::vector<std::string> faults;
    for (const auto& file : captures) {
        if (interrupted())
            break;
        try {
            decode_capture(file, run, output);
        } catch (const broken_capture& error) {
            faults.emplace_back(error.what());
        }
    }
    if (run.fates().frames == 0)
        throw failure(faults.empty()
                          ? fmt::format("there are no frames in '{}'", captures.back().string())
                          : faults.front());
    return faults;
}

} // namespace rtrange
