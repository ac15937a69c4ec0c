#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/zelc_check/rule.hpp"

namespace zelc_check {
namespace {

constexpr const char* format_types[] = {ZEL_FORMAT_TYPE_RTRANGE, ZEL_FORMAT_TYPE_ETH_RTRANGE,
                                        ZEL_FORMAT_TYPE_ETH};
constexpr std::size_t large = std::size_t{4} << 20;
constexpr std::size_t sizes[] = {0, 1, 63, 64, 873, 1191, 1514, 65536, large};
/// Without the size that takes the checks of several threads long.
constexpr std::span<const std::size_t> data_sizes(sizes, std::size(sizes) - 1);

/// Leaves memory behind that is not zero, for packages created next.
void soil_memory(const zelc& library) {
    constexpr std::size_t size = 100'000;
    make_package(library, size).fill(0xFF, size);
}

void expect_success(const zelc& library, zel_status_t status, const error_slot& error) {
    const char* const text =
        error.get() != nullptr ? library.get_description(error.get()) : nullptr;
    expect(status == 0, "status 0",
           hexadecimal(status) + (text != nullptr ? " with " + quoted(text) : ""));
}

void creates(const zelc& library) {
    for (const std::size_t size : sizes) {
        error_slot error(library);
        zel_package_t* created = nullptr;
        const zel_status_t status =
            library.create_package(&allocator, size, &created, error.target());
        const package owner(library, created);
        expect_success(library, status, error);
        expect(created != nullptr, "a package", "a null pointer");
    }
}

/// Where the host may keep the format type: its own members of the header.
bool may_hold_format_type(std::size_t offset, std::string_view format_type) {
    const auto lies_in = [&](std::size_t member, std::size_t size) {
        return offset >= member && offset < member + size;
    };
    const bool nibble_is_the_hosts = format_type != ZEL_FORMAT_TYPE_RTRANGE;
    return lies_in(offsetof(zel_package_t, host_block), sizeof(zel_package_t::host_block)) ||
           (nibble_is_the_hosts && lies_in(offsetof(zel_package_t, source_info_nibble),
                                           sizeof(zel_package_t::source_info_nibble)));
}

void expect_zero(std::uint8_t byte, std::size_t offset) {
    expect(byte == 0, "a header of zeros",
           hexadecimal(byte) + " at byte " + std::to_string(offset));
}

void clears_the_header(const zelc& library) {
    soil_memory(library);
    std::vector<package> live;
    for (const std::size_t size : sizes)
        for (int i = 0; i < 4; ++i) {
            live.push_back(make_package(library, size));
            const auto header = live.back().header();
            for (std::size_t offset = 0; offset < offsetof(zel_package_t, size); ++offset)
                expect_zero(header[offset], offset);
        }
}

void sets_the_size(const zelc& library) {
    for (const std::size_t size : sizes)
        expect_equal(size, make_package(library, size).get()->size, "size");
}

/// Fills many packages, destroys some, and looks at the others again.
void keeps_packages_apart(const zelc& library) {
    constexpr std::size_t count = 2000;
    const auto size = [](std::size_t i) { return i * 37 % 1500; };
    const auto value = [](std::size_t i) { return static_cast<std::uint8_t>(i % 251); };
    std::vector<package> even, odd;
    for (std::size_t i = 0; i < count; ++i) {
        auto& packages = i % 2 == 0 ? even : odd;
        packages.push_back(make_package(library, size(i)));
        packages.back().fill(value(i), size(i));
    }
    even.clear();
    make_package(library, large).fill(0xFF, large);
    for (std::size_t i = 1; i < count; i += 2) {
        const package& one = odd[i / 2];
        expect_equal(size(i), one.get()->size, "one of many packages to keep its size");
        expect_equal(value(i), one.get()->pass_through_block[3], "the header of one of many");
        const auto data = one.data(size(i));
        const auto other = std::ranges::find_if(data, [&](auto byte) { return byte != value(i); });
        if (other != data.end())
            expect_equal(value(i), *other, "the data of one of many packages");
    }
}

void refuses_sizes_too_large(const zelc& library) {
    zel_package_t untouched{};
    for (const std::size_t size : {SIZE_MAX, SIZE_MAX - sizeof(zel_package_t) + 1, SIZE_MAX / 2}) {
        error_slot error(library);
        zel_package_t* created = &untouched;
        const zel_status_t status =
            library.create_package(&allocator, size, &created, error.target());
        const std::string what = " for " + hexadecimal(size) + " bytes";
        expect(status != 0, "a failure" + what, "status 0");
        expect(created == &untouched, "*package to be left alone" + what, "another pointer");
    }
}

std::vector<std::uint8_t> pattern(std::size_t size) {
    std::vector<std::uint8_t> data(size);
    data.reserve(1); // an address even if there are no bytes
    for (std::size_t i = 0; i < size; ++i)
        data[i] = static_cast<std::uint8_t>(i * 7 + i / 251 + 1);
    return data;
}

void creates_with_data(const zelc& library) {
    for (const char* const format_type : format_types)
        for (const std::size_t size : data_sizes) {
            const auto data = pattern(size);
            error_slot error(library);
            zel_package_t* created = nullptr;
            const zel_status_t status = library.create_package_with_data(
                &allocator, format_type, data.data(), size, &created, error.target());
            const package owner(library, created);
            expect_success(library, status, error);
            expect(created != nullptr, "a package", "a null pointer");
        }
}

void fills_the_header_with_data(const zelc& library) {
    soil_memory(library);
    std::vector<package> live;
    for (const char* const format_type : format_types)
        for (const std::size_t size : data_sizes) {
            live.push_back(make_package(library, format_type, pattern(size)));
            expect_equal(size, live.back().get()->size, "size");
            const auto header = live.back().header();
            for (std::size_t offset = 0; offset < offsetof(zel_package_t, size); ++offset)
                if (!may_hold_format_type(offset, format_type))
                    expect_zero(header[offset], offset);
        }
}

void copies_the_data(const zelc& library) {
    for (const std::size_t size : data_sizes) {
        auto data = pattern(size);
        const auto expected = data;
        const package one = make_package(library, ZEL_FORMAT_TYPE_ETH, data);
        std::ranges::fill(data, std::uint8_t{0});
        const auto seen = one.data(size);
        const auto [at_seen, at_expected] = std::ranges::mismatch(seen, expected);
        if (at_expected != expected.end())
            expect_equal(*at_expected, *at_seen,
                         "data byte " + std::to_string(at_seen - seen.begin()) + " to be");
    }
}

/// Assigns a format type; the text is gone afterwards. Throws broken_rule.
void assign(const zelc& library, const package& one, const char* format_type) {
    std::string text = format_type;
    error_slot error(library);
    expect_success(library, library.assign_format_type(one.get(), text.c_str(), error.target()),
                   error);
    text.assign(text.size(), 'x');
}

void assigns_format_types(const zelc& library) {
    for (const char* const format_type : format_types)
        assign(library, make_package(library, 100), format_type);
}

void leaves_the_rest_of_the_package(const zelc& library) {
    constexpr std::uint8_t value = 0xA5;
    constexpr std::size_t size = 877;
    for (const char* const format_type : format_types) {
        const package one = make_package(library, size);
        one.fill(value, size);
        const std::vector<std::uint8_t> before(one.header().begin(), one.header().end());
        error_slot error(library);
        library.assign_format_type(one.get(), format_type, error.target());
        for (std::size_t offset = 0; offset < before.size(); ++offset)
            if (!may_hold_format_type(offset, format_type))
                expect_equal(before[offset], one.header()[offset],
                             "byte " + std::to_string(offset) + " of the header to stay");
        for (const std::uint8_t byte : one.data(size))
            expect_equal(value, byte, "a data byte to stay");
    }
}

/// Only the header can be searched: a host may keep the format type elsewhere.
void expect_no_address(const package& one, const char* format_type) {
    const auto header = one.header();
    std::uint8_t address[sizeof(format_type)];
    std::memcpy(address, &format_type, sizeof(address));
    const auto found =
        std::search(header.begin(), header.end(), std::begin(address), std::end(address));
    expect(found == header.end(), "a copy of the format type", "its address in the header");
}

void copies_the_format_type(const zelc& library) {
    const std::string text = ZEL_FORMAT_TYPE_RTRANGE;
    const package typed = make_package(library, 100);
    error_slot error(library);
    library.assign_format_type(typed.get(), text.c_str(), error.target());
    expect_no_address(typed, text.c_str());
    expect_no_address(make_package(library, text.c_str(), pattern(100)), text.c_str());
}

void destroys(const zelc& library) {
    for (const std::size_t size : data_sizes) {
        error_slot error(library);
        package one = make_package(library, size);
        zel_status_t status = library.destroy_package(&allocator, one.release(), error.target());
        expect_success(library, status, error);
        package typed = make_package(library, ZEL_FORMAT_TYPE_ETH, pattern(size));
        status = library.destroy_package(&allocator, typed.release(), error.target());
        expect_success(library, status, error);
    }
}

void accepts_null_to_destroy(const zelc& library) {
    error_slot error(library);
    const zel_status_t status = library.destroy_package(&allocator, nullptr, error.target());
    expect_success(library, status, error);
}

void passes_the_context(const zelc& library) {
    make_package(library, 100);
    make_package(library, ZEL_FORMAT_TYPE_ETH, pattern(100));
    expect(!got_foreign_context(), "the allocator's context as last argument of allocate_array",
           "another pointer");
}

} // namespace

std::vector<rule> package_rules() {
    return {
        {"P1", creates, nullptr},
        {"P2", clears_the_header, nullptr},
        {"P3", sets_the_size, nullptr},
        {"P4", keeps_packages_apart, nullptr},
        {"P5", refuses_sizes_too_large, nullptr},
        {"P6", creates_with_data, nullptr},
        {"P7", fills_the_header_with_data, nullptr},
        {"P8", copies_the_data, nullptr},
        {"P9", nullptr, "no call with valid arguments makes the function fail"},
        {"P10", assigns_format_types, nullptr},
        {"P11", leaves_the_rest_of_the_package, nullptr},
        {"P12", copies_the_format_type, nullptr},
        {"P13", nullptr, "no call with valid arguments makes the function fail"},
        {"P14", destroys, nullptr},
        {"P15", accepts_null_to_destroy, nullptr},
        {"P16", nullptr, "needs a leak checker, such as valgrind"},
        {"P17", passes_the_context, nullptr},
    };
}

} // namespace zelc_check
