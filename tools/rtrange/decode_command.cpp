#include "tools/rtrange/decode_command.hpp"

#include <cstdint>
#include <optional>

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
        fates_.end_frame(frame.bytes, frame.time_ns, decoded);
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

void decode_capture(capture_reader& capture, const std::filesystem::path& file,
                    decoding& decoding) {
    constexpr std::uint64_t frames_per_update = 1024;
    std::error_code ignored;
    progress_bar progress(fmt::format("Decoding {}", file.filename().string()),
                          std::filesystem::file_size(file, ignored));
    std::uint64_t frames = 0;
    while (const auto frame = capture.next()) {
        decoding.decode(*frame);
        if (++frames % frames_per_update == 0)
            progress.update(capture.position());
    }
}

} // namespace

int decode(const decode_options& options) {
    // Opened before anything is written, so that a wrong name costs nobody an earlier result.
    std::vector<capture_reader> captures;
    for (const auto& file : options.captures)
        captures.emplace_back(file);

    decoding run(options);
    std::optional<broken_capture> broken;
    for (std::size_t i = 0; i < captures.size() && !broken; ++i) {
        fmt::print("Decoding {}\n", options.captures[i].string());
        std::fflush(stdout);
        try {
            decode_capture(captures[i], options.captures[i], run);
        } catch (const broken_capture& error) {
            broken = error;
        }
    }
    if (run.fates().frames == 0 && broken)
        throw *broken;
    if (run.fates().frames == 0)
        throw failure("there are no frames to decode: the capture is empty");
    run.finish();
    if (!broken)
        return exit_success;
    std::fflush(stdout);
    fmt::print(stderr, "rtrange: {}; what came before is decoded\n", broken->what());
    return exit_failure;
}

} // namespace rtrange
