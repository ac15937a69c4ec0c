#include "host/loader/packages.hpp"

#include <cstdlib>
#include <cstring>
#include <utility>

namespace zel::host {
namespace {

void* allocate_array(std::size_t count, std::size_t element_size, void*) {
    return std::malloc(count * element_size);
}

} // namespace

raw_package_buffer::raw_package_buffer() : bytes_(sizeof(zel_raw_package_t)) {}

std::span<std::uint8_t> raw_package_buffer::resize(std::size_t size) {
    bytes_.resize(sizeof(zel_raw_package_t) + size);
    package().size = size;
    return std::span(bytes_).subspan(sizeof(zel_raw_package_t));
}

zel_raw_package_t& raw_package_buffer::package() {
    return *reinterpret_cast<zel_raw_package_t*>(bytes_.data());
}

const zel_raw_package_t& raw_package_buffer::package() const {
    return *reinterpret_cast<const zel_raw_package_t*>(bytes_.data());
}

std::string_view format_type(const zel_package_t& package) {
    const auto* const text = reinterpret_cast<const char*>(package.host_block);
    return {text, strnlen(text, sizeof(package.host_block))};
}

std::span<const std::uint8_t> data(const zel_package_t& package) {
    return {reinterpret_cast<const std::uint8_t*>(&package + 1), package.size};
}

package_array::package_array(package_array&& other) noexcept
    : packages_(std::exchange(other.packages_, {})) {}

package_array::~package_array() {
    for (zel_package_t* const package : packages_)
        zel_package_destroy(&allocator(), package, nullptr);
    std::free(packages_.data());
}

const zel_allocator_t& package_array::allocator() {
    static const zel_allocator_t allocator{nullptr, nullptr, nullptr, &allocate_array,
                                           nullptr, nullptr, nullptr};
    return allocator;
}

} // namespace zel::host
