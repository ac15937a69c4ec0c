// What a fuzz target is given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace fuzz {

/// Takes an input apart, byte by byte, and returns zeros after its end. Once an input has been
/// constructed, a failed expectation aborts the program.
class input {
public:
    explicit input(std::span<const std::uint8_t> bytes);

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte();
    /// The next `size` bytes, or what is left of them.
    std::vector<std::uint8_t> take(std::size_t size);
    /// The text up to the next zero byte, or to the end.
    std::string text();

private:
    std::span<const std::uint8_t> rest_;
};

} // namespace fuzz
