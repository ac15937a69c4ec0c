#include "tools/rtrange/decode_command.hpp"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "host/loader/plugin.hpp"
#include "host/loader/raw_frames.hpp"
#include "tools/rtrange/capture_reader.hpp"
#include "tools/rtrange/decode_summary.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/frame_fates.hpp"
#include "tools/rtrange/progress_bar.hpp"
#include "tools/rtrange/record_files.hpp"

namespace rtrange {
namespace {

using wrap_function = void (*)(std::span<const std::uint8_t>, zel::host::raw_package_buffer&);

wrap_function wrapping_of(std::string_view format) {
    return format == zel::host::recorder_frame_type ? &zel::host::wrap_recorder_frame
                                                    : &zel::host::wrap_ethernet_frame;
}

/// Drives one instance of the plug-in with the frames of any number of captures.
class decoding {
public:
    explicit decoding(const decode_options& options)
        : plugin_(options.plugin),
          services_([this](const zel_log_info_t& record) { fates_.log(record); }),
          instance_(plugin_.formatter(options.format), services_),
          wrap_(wrapping_of(options.format)), files_(options.output) {}

    void decode(const captured_frame& frame) {
        wrap_(frame.bytes, raw_package_);
        raw_package_.package().reference_timestamp = frame.time_ns;
        const std::size_t decoded = files_.write(instance_.transform(raw_package_.package()));
        fates_.end_frame(frame, decoded);
    }

    void finish() {
        files_.close();
        print_summary(fates_, files_.tables());
    }

    const frame_fates& fates() const { return fates_; }

private:
    frame_fates fates_;
    zel::host::plugin plugin_;
    zel::host::host_services services_;
    zel::host::formatter_instance instance_;
    wrap_function wrap_;
    zel::host::raw_package_buffer raw_package_;
    record_files files_;
};

void decode_capture(const std::filesystem::path& file, decoding& run) {
    constexpr std::uint64_t frames_per_update = 1024;
    std::printf("Decoding %s\n", file.string().c_str()); // whether or not anybody reads it
    std::fflush(stdout);
    capture_reader capture(file);
    std::error_code ignored;
    progress_bar progress(fmt::format("Decoding {}", file.filename().string()),
                          std::filesystem::file_size(file, ignored));
    std::uint64_t frames = 0;
    while (const auto frame = capture.next()) {
        run.decode(*frame);
        if (++frames % frames_per_update == 0)
            progress.update(capture.position());
    }
}

} // namespace

int decode(const decode_options& options) {
    // All of them looked at before anything is written, so that a wrong name costs nobody an
    // earlier result.
    for (const auto& file : options.captures)
        capture_reader{file};

    decoding run(options);
    std::vector<std::string> broken;
    for (const auto& file : options.captures) {
        try {
            decode_capture(file, run);
        } catch (const broken_capture& error) {
            broken.emplace_back(error.what());
        }
    }
    if (run.fates().frames == 0)
        throw failure(broken.empty() ? fmt::format("there are no frames in '{}'",
                                                   options.captures.back().string())
                                     : broken.front());
    run.finish();
    std::fflush(stdout);
    for (const std::string& what : broken)
        std::fprintf(stderr, "rtrange: %s; what came before is decoded\n", what.c_str());
    return broken.empty() ? exit_success : exit_failure;
}

} // namespace rtrange
