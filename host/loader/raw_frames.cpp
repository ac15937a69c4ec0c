#include "host/loader/raw_frames.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

#include "zelcpp/crc32c.hpp"

namespace zel::host {
namespace {

void wrap(std::span<const std::uint8_t> header, std::span<const std::uint8_t> frame,
          raw_package_buffer& raw_package) {
    const std::span<std::uint8_t> data = raw_package.resize(header.size() + frame.size());
    std::ranges::copy(header, data.begin());
    std::ranges::copy(frame, data.begin() + static_cast<std::ptrdiff_t>(header.size()));
}

} // namespace

void wrap_recorder_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package) {
    std::uint32_t crc = utility::crc32c::checksum(frame.data(), frame.size(), 0xFFFFFFFF);
    if (crc == 0)
        crc = 1; // 0 marks a corrupt frame
    const std::array<std::uint8_t, 4> header{
        static_cast<std::uint8_t>(crc), static_cast<std::uint8_t>(crc >> 8),
        static_cast<std::uint8_t>(crc >> 16), static_cast<std::uint8_t>(crc >> 24)};
    wrap(header, frame, raw_package);
}

void wrap_ethernet_frame(std::span<const std::uint8_t> frame, raw_package_buffer& raw_package) {
    constexpr std::array<std::uint8_t, 16> vehicle_bus_header{};
    wrap(vehicle_bus_header, frame, raw_package);
}

} // namespace zel::host
