// Raw packages, and the packages they are transformed into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "zel/package.h"
#include "zel/raw_package.h"

namespace zel::host {

/// A raw package whose storage is reused from one frame to the next.
class raw_package_buffer {
public:
    raw_package_buffer();

    /// Resizes the data to `size` bytes and returns them. Their content is undefined.
    std::span<std::uint8_t> resize(std::size_t size);

    zel_raw_package_t& package();
    const zel_raw_package_t& package() const;

private:
    std::vector<std::uint8_t> bytes_;
};

/// The format type of a package of this host.
std::string_view format_type(const zel_package_t& package);

/// The data behind a package's header.
std::span<const std::uint8_t> data(const zel_package_t& package);

/// The result of one transformation: owns the array and every package in it.
class package_array {
public:
    package_array(zel_package_t** packages, std::size_t count) : packages_(packages, count) {}
    package_array(package_array&& other) noexcept;
    package_array& operator=(package_array&& other) = delete;
    ~package_array();

    std::size_t size() const { return packages_.size(); }
    const zel_package_t& operator[](std::size_t index) const { return *packages_[index]; }

    auto begin() const { return packages_.begin(); }
    auto end() const { return packages_.end(); }

    /// The allocator to hand to a transformation whose result becomes a package_array.
    static const zel_allocator_t& allocator();

private:
    std::span<zel_package_t*> packages_;
};

} // namespace zel::host
