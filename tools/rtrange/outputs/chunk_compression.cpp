#include "tools/rtrange/outputs/chunk_compression.hpp"

#include <algorithm>
#include <array>
#include <bitset>
#include <new>

#include <libdeflate.h>

namespace rtrange {
namespace {

using bytes = std::span<const std::uint8_t>;

/// Puts the first bytes of all elements first, then the second ones, and so on.
void put_in_planes(bytes elements, std::size_t element_size, std::uint8_t* planes) {
    for (std::size_t byte = 0; byte < element_size; ++byte)
        for (std::size_t at = byte; at < elements.size(); at += element_size)
            *planes++ = elements[at];
}

/// The same, several times as fast, for the size of nearly all elements.
void put_in_eight_planes(bytes elements, std::uint8_t* planes) {
    for (std::size_t byte = 0; byte < 8; ++byte)
        for (std::size_t i = 0; i < elements.size() / 8; ++i)
            *planes++ = elements[8 * i + byte];
}

/// Whether compressing the bytes would take long and save little, judged by the first ones. Of 1024
/// random bytes, 251 different ones are expected, or 221 if each comes twice, which deflate does
/// not find: its matches have three bytes or more. A smaller limit makes runs faster and files
/// larger.
bool is_hardly_compressible(bytes plane) {
    constexpr std::size_t sample = 1024;
    constexpr std::size_t least_different = 120;
    if (plane.size() < sample)
        return false;
    std::bitset<256> seen;
    for (const std::uint8_t byte : plane.first(sample))
        seen.set(byte);
    return seen.count() >= least_different;
}

/// The size of the leading planes that are hardly compressible, as far as a stored block holds
/// them.
std::size_t stored_size(bytes planes, std::size_t plane_size) {
    constexpr std::size_t most = 0xFFFF;
    std::size_t size = 0;
    while (size + plane_size <= std::min(planes.size(), most) &&
           is_hardly_compressible(planes.subspan(size, plane_size)))
        size += plane_size;
    return size;
}

/// Writes a deflate block that is not compressed, and not the last one.
std::uint8_t* write_stored_block(bytes content, std::uint8_t* to) {
    const auto low = static_cast<std::uint8_t>(content.size() & 0xFF);
    const auto high = static_cast<std::uint8_t>(content.size() >> 8);
    const std::array<std::uint8_t, 5> header{0, low, high, static_cast<std::uint8_t>(~low),
                                             static_cast<std::uint8_t>(~high)};
    to = std::ranges::copy(header, to).out;
    return std::ranges::copy(content, to).out;
}

} // namespace

void chunk_compressor::deleter::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

chunk_compressor::chunk_compressor()
    : compressor_(libdeflate_alloc_compressor(chunk_compression_level)) {
    if (compressor_ == nullptr)
        throw std::bad_alloc();
}

std::vector<std::uint8_t> chunk_compressor::compress(bytes elements, std::size_t element_size) {
    shuffle(elements, element_size);
    const bytes planes = shuffled_;
    const bytes stored = planes.first(stored_size(planes, elements.size() / element_size));
    const bytes rest = planes.subspan(stored.size());

    constexpr std::array<std::uint8_t, 2> zlib_header{0x78, 0x01};
    constexpr std::size_t other_bytes = 11; // headers of the stream and of a stored block, checksum
    stream_.resize(other_bytes + stored.size() +
                   libdeflate_deflate_compress_bound(compressor_.get(), rest.size()));
    std::uint8_t* const begin = stream_.data();
    std::uint8_t* end = std::ranges::copy(zlib_header, begin).out;
    if (!stored.empty())
        end = write_stored_block(stored, end);
    end += libdeflate_deflate_compress(compressor_.get(), rest.data(), rest.size(), end,
                                       stream_.size() - static_cast<std::size_t>(end - begin));
    const std::uint32_t checksum = libdeflate_adler32(1, planes.data(), planes.size());
    for (const int shift : {24, 16, 8, 0})
        *end++ = static_cast<std::uint8_t>(checksum >> shift);
    return {begin, end};
}

void chunk_compressor::shuffle(bytes elements, std::size_t element_size) {
    shuffled_.resize(elements.size());
    if (element_size == 8)
        put_in_eight_planes(elements, shuffled_.data());
    else
        put_in_planes(elements, element_size, shuffled_.data());
}

} // namespace rtrange
