#include "tools/rtrange/progress_bar.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <fmt/format.h>
#include <unistd.h>

namespace rtrange {

progress_bar::progress_bar(std::string label, std::uint64_t total)
    : label_(std::move(label)), total_(total), visible_(isatty(STDERR_FILENO) != 0) {
    update(0);
}

progress_bar::~progress_bar() {
    if (visible_)
        fmt::print(stderr, "\r\x1b[K");
}

void progress_bar::update(std::uint64_t done) {
    constexpr std::uint64_t width = 40;
    const std::uint64_t percent =
        total_ == 0 ? 100 : std::min<std::uint64_t>(done * 100 / total_, 100);
    if (!visible_ || percent == shown_percent_)
        return;
    shown_percent_ = percent;
    const std::uint64_t filled = percent * width / 100;
    fmt::print(stderr, "\r{} [{:#<{}}{:.<{}}] {:3} %", label_, "", filled, "", width - filled,
               percent);
    std::fflush(stderr);
}

} // namespace rtrange
