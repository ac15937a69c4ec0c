#include "fuzz/input.hpp"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>

namespace fuzz {
namespace {

/// libFuzzer keeps the input of a program that aborts, but not of one that reaches a breakpoint.
class aborting_listener : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed())
            std::abort();
    }
};

} // namespace

input::input(std::span<const std::uint8_t> bytes) : rest_(bytes) {
    static const bool is_appended = [] {
        // Behind the printer of failures. GoogleTest deletes it.
        testing::UnitTest::GetInstance()->listeners().Append(new aborting_listener);
        return true;
    }();
    static_cast<void>(is_appended);
}

std::uint8_t input::byte() {
    const auto taken = take(1);
    return taken.empty() ? std::uint8_t{0} : taken[0];
}

std::vector<std::uint8_t> input::take(std::size_t size) {
    const auto taken = rest_.first(std::min(size, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return {taken.begin(), taken.end()};
}

std::string input::text() {
    const auto end = std::ranges::find(rest_, std::uint8_t{0});
    const auto taken = take(static_cast<std::size_t>(end - rest_.begin()));
    take(1);
    return {taken.begin(), taken.end()};
}

} // namespace fuzz
