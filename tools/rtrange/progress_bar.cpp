#include "tools/rtrange/progress_bar.hpp"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace rtrange {

progress_bar::progress_bar(std::string label, std::uint64_t total)
    : label_(std::move(label)), total_(total) {
    update(0);
}

void progress_bar::update(std::uint64_t done) {
    constexpr std::uint64_t width = 40;
    const std::uint64_t percent =
        total_ == 0 ? 100 : std::min<std::uint64_t>(done * 100 / total_, 100);
    if (percent == shown_percent_)
        return;
    shown_percent_ = percent;
    const std::uint64_t filled = percent * width / 100;
    line_.show(
        fmt::format("{} [{:#<{}}{:.<{}}] {:3} %", label_, "", filled, "", width - filled, percent));
}

} // namespace rtrange
