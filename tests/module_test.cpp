// The library as a host sees it before it creates anything.

#include <regex>

#include <gtest/gtest.h>

#include "host/loader/shared_library.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace harness {
namespace {

struct enumeration {
    std::vector<std::string> format_types;
    std::size_t stop_after;
};

bool note(const zel_formatter_dispatch_table_t* table, void* context) {
    auto& seen = *static_cast<enumeration*>(context);
    seen.format_types.emplace_back(table->format_type);
    return seen.format_types.size() < seen.stop_after;
}

TEST(module, enumerates_its_formatters_in_order_until_told_to_stop) {
    const zel::host::shared_library library(plugin_file);
    const auto enumerate =
        library.function<zel_enum_formatter_dispatch_table_t>("zel_enum_formatter_dispatch_table");
    const std::vector<std::string> both{"zel.rtrange", "zel.eth.rtrange"};
    for (const std::size_t stop_after : {99U, 1U, 2U}) {
        enumeration seen{{}, stop_after};
        enumerate(&note, &seen);
        EXPECT_EQ(seen.format_types, stop_after == 1 ? std::vector{both[0]} : both);
    }
    enumerate(nullptr, nullptr);
}

/// Checks the version in the metadata against that of the compiler of this file: two digits major,
/// two digits minor, five digits patch level.
void expect_compiler_version(const std::string& version) {
#if defined(__clang__)
    EXPECT_EQ(std::stoi(version),
              (__clang_major__ * 100 + __clang_minor__) * 100'000 + __clang_patchlevel__);
#elif __GNUC_MINOR__ > 0
    EXPECT_EQ(std::stoi(version),
              (__GNUC__ * 100 + __GNUC_MINOR__) * 100'000 + __GNUC_PATCHLEVEL__);
#else
    // Debian's MinGW hides its minor version, which is never 0 in a release of GCC.
    EXPECT_EQ(std::stoi(version.substr(0, 2)), __GNUC__);
    EXPECT_NE(version.substr(2, 2), "00");
#endif
}

TEST(module, metadata_is_a_dictionary_of_ten_lines) {
    const zel::host::shared_library library(plugin_file);
    const std::string text =
        library.function<zel_runtime_query_metadata_t>("zel_runtime_query_metadata")();
    const std::string version = R"(\d[\d.]*-[0-9a-f]{8}(?:-dirty)?)";
    const std::string month = "(?:Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)";
    const std::regex expected(R"(zel-meta=nddictionary
zel-sdk-version=()" + version +
                              R"()
build-configuration=release
build-platform=Win32
build-architecture=x64
build-date=)" + month + R"( [ \d]\d \d{4}
compiler=.+
compiler-version=(\d{9})
zel-product-version=\1
zel-library-type=formatter)");
    std::smatch found;
    ASSERT_TRUE(std::regex_match(text, found, expected)) << text;
    expect_compiler_version(found[2]);
}

} // namespace
} // namespace harness
