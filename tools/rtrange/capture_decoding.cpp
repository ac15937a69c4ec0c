#include "tools/rtrange/capture_decoding.hpp"

#include <algorithm>
#include <cstdint>
#include <system_error>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/interruption.hpp"
#include "tools/rtrange/progress_bar.hpp"
#include "tools/rtrange/standard_output.hpp"
#include "tools/rtrange/times.hpp"

namespace rtrange {
namespace {

/// The user has interrupted the run before the end of a capture.
class interruption : public broken_capture {
public:
    using broken_capture::broken_capture;
};

/// Throws interruption if the user has interrupted the run before this frame. It is not called
/// after the last frame, because the tables are complete then.
void check_interruption(const capture_reader& capture, const captured_frame& next) {
    if (interrupted())
        throw interruption(fmt::format("interrupted in '{}' after frame {}",
                                       capture.path().string(), next.number - 1));
}

void follow_capture(capture_reader& capture, frame_decoder& decoder, table_output& output,
                    run_follower& follower) {
    while (const auto frame = capture.next()) {
        follower.wait_for(*frame);
        check_interruption(capture, *frame);
        decoder.decode(*frame, output);
        follower.finish(*frame);
    }
}

void decode_capture(capture_reader& capture, frame_decoder& decoder, table_output& output) {
    constexpr std::uint64_t frames_per_update = 1024;
    const std::filesystem::path& file = capture.path();
    std::error_code unknown_size;
    const std::uintmax_t size = std::filesystem::file_size(file, unknown_size);
    progress_bar progress(fmt::format("Decoding {}", file.filename().string()),
                          unknown_size ? 0 : size);
    while (const auto frame = capture.next()) {
        check_interruption(capture, *frame);
        decoder.decode(*frame, output);
        if (frame->number % frames_per_update == 0)
            progress.update(capture.position());
    }
}

/// Throws failure when a capture begins before the end of those that were decoded.
void check_overlap(const capture_reader& capture, const frame_outcomes& outcomes) {
    if (outcomes.frames > 0 && capture.has_frames() &&
        capture.first_time_ns() < outcomes.last_time_ns)
        throw failure(fmt::format("'{}' overlaps the captures before it, which end at {}; decode "
                                  "them one by one, or join them with mergecap",
                                  capture.path().string(), utc_text(outcomes.last_time_ns)));
}

} // namespace

std::vector<capture_reader> open_captures(const std::vector<std::filesystem::path>& captures) {
    std::vector<capture_reader> readers;
    readers.reserve(captures.size());
    for (const auto& file : captures)
        readers.emplace_back(file);
    if (!readers.empty() && std::ranges::none_of(readers, &capture_reader::has_frames)) {
        readers.front().next(); // throws if the file is broken instead of empty
        throw failure(fmt::format("there are no frames in '{}'", captures.front().string()));
    }
    if (!std::ranges::is_sorted(readers, {}, &capture_reader::first_time_ns)) {
        std::ranges::stable_sort(readers, {}, &capture_reader::first_time_ns);
        print_progress("The captures are decoded in the order of their first frames.\n");
    }
    return readers;
}

void check_output(const std::filesystem::path& output,
                  const std::vector<std::filesystem::path>& captures) {
    for (const auto& capture : captures) {
        std::error_code ignored;
        if (std::filesystem::equivalent(output, capture, ignored))
            throw usage_failure(fmt::format(
                "'{}' is one of the captures; give the output another name", output.string()));
    }
}

std::vector<std::string> decode_captures(std::vector<capture_reader>& captures,
                                         frame_decoder& decoder, table_output& output,
                                         run_follower* follower) {
    std::vector<std::string> faults;
    const auto note = [&](const broken_capture& error) {
        faults.push_back(fmt::format("{}; the frames before that are decoded", error.what()));
    };
    for (capture_reader& capture : captures) {
        check_overlap(capture, decoder.outcomes());
        print_progress("Decoding {}\n", capture.path().string());
        try {
            if (follower != nullptr)
                follow_capture(capture, decoder, output, *follower);
            else
                decode_capture(capture, decoder, output);
        } catch (const interruption& error) {
            if (follower == nullptr || follower->needs_all_frames())
                note(error);
            break;
        } catch (const broken_capture& error) {
            note(error);
        }
    }
    return faults;
}

} // namespace rtrange
