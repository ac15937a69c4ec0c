#include "tools/rtrange/outputs/chunk_queue.hpp"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>
#include <libdeflate.h>

#include "tools/rtrange/outputs/hdf5_handle.hpp"

namespace rtrange {

namespace {

/// Additions that may be pending. Each takes a few megabytes.
constexpr std::size_t most_pending = 2;

/// Fast. Higher levels hardly make the data smaller.
constexpr int compression_level = 1;

/// Puts the first bytes of all elements first, then the second ones, and so on.
template <std::size_t Size>
void shuffle(const std::uint8_t* elements, std::size_t count, std::uint8_t* shuffled) {
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t byte = 0; byte < Size; ++byte)
            shuffled[byte * count + i] = elements[i * Size + byte];
}

void shuffle(const std::vector<std::uint8_t>& elements, std::size_t element_size,
             std::vector<std::uint8_t>& shuffled) {
    shuffled.resize(elements.size());
    const std::size_t count = elements.size() / element_size;
    if (element_size == 8)
        return shuffle<8>(elements.data(), count, shuffled.data());
    std::uint8_t* target = shuffled.data();
    for (std::size_t byte = 0; byte < element_size; ++byte)
        for (std::size_t at = byte; at < elements.size(); at += element_size)
            *target++ = elements[at];
}

} // namespace

/// Compresses chunks one after the other.
class chunk_queue::compressor {
public:
    compressor() : compressor_(libdeflate_alloc_compressor(compression_level)) {
        if (compressor_ == nullptr)
            throw std::bad_alloc();
    }

    void compress(dataset_chunk& chunk) {
        const std::string_view elements(reinterpret_cast<const char*>(chunk.elements.data()),
                                        chunk.elements.size());
        if (elements.substr(chunk.element_size) ==
            elements.substr(0, elements.size() - chunk.element_size))
            compress_constant(chunk, std::string(elements.substr(0, chunk.element_size)));
        else
            chunk.elements = compressed(chunk);
    }

private:
    struct deleter {
        void operator()(libdeflate_compressor* compressor) const {
            libdeflate_free_compressor(compressor);
        }
    };

    /// Most columns are constant for minutes, many of them with the same value.
    void compress_constant(dataset_chunk& chunk, std::string element) {
        constexpr std::size_t most_constants = 1000;
        if (constants_.size() == most_constants)
            constants_.clear();
        std::vector<std::uint8_t>& constant = constants_[std::move(element)];
        if (constant.empty())
            constant = compressed(chunk);
        chunk.elements = constant;
    }

    std::vector<std::uint8_t> compressed(const dataset_chunk& chunk) {
        shuffle(chunk.elements, chunk.element_size, shuffled_);
        compressed_.resize(libdeflate_zlib_compress_bound(compressor_.get(), shuffled_.size()));
        const std::size_t size =
            libdeflate_zlib_compress(compressor_.get(), shuffled_.data(), shuffled_.size(),
                                     compressed_.data(), compressed_.size());
        return {compressed_.begin(), compressed_.begin() + static_cast<std::ptrdiff_t>(size)};
    }

    std::unique_ptr<libdeflate_compressor, deleter> compressor_;
    std::vector<std::uint8_t> shuffled_;
    std::vector<std::uint8_t> compressed_;
    std::map<std::string, std::vector<std::uint8_t>> constants_; ///< compressed, by element
};

namespace {

void write(const dataset_chunk& chunk) {
    constexpr std::uint32_t all_filters = 0;
    check_hdf5(H5Dset_extent(chunk.dataset, chunk.size.numbers()), "extending a dataset");
    check_hdf5(H5Dwrite_chunk(chunk.dataset, H5P_DEFAULT, all_filters, chunk.position.numbers(),
                              chunk.elements.size(), chunk.elements.data()),
               "writing a dataset");
}

} // namespace

chunk_queue::chunk_queue() = default;
chunk_queue::~chunk_queue() = default;

void chunk_queue::add(std::vector<dataset_chunk> chunks) {
    if (pending_.size() == most_pending)
        write_first();
    if (free_.empty())
        free_.push_back(std::make_unique<compressor>());
    job next{std::move(chunks), std::move(free_.back())};
    free_.pop_back();
    const auto compress = [](chunk_queue::job work) {
        for (dataset_chunk& chunk : work.chunks)
            work.compressor->compress(chunk);
        return work;
    };
    try {
        pending_.push_back(std::async(std::launch::async, compress, std::move(next)));
    } catch (const std::system_error& error) {
        throw hdf5_error(fmt::format("{}, while starting a thread", error.code().message()));
    }
}

void chunk_queue::finish() {
    while (!pending_.empty())
        write_first();
}

void chunk_queue::write_first() {
    job done = pending_.front().get();
    pending_.pop_front();
    for (const dataset_chunk& chunk : done.chunks)
        write(chunk);
    free_.push_back(std::move(done.compressor));
}

} // namespace rtrange
