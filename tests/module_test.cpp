// The library as a host sees it before it creates anything.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/harness/plugin_under_test.hpp"

namespace {

using namespace harness;

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
    const std::vector<std::string> both{"zel.rtrange", "zel.eth.rtrange"};
    for (int repetition = 0; repetition < 2; ++repetition) {
        enumeration all{{}, 99};
        enum_formatters(&note, &all);
        EXPECT_EQ(all.format_types, both);
    }
    enumeration first{{}, 1};
    enum_formatters(&note, &first);
    EXPECT_EQ(first.format_types, std::vector<std::string>{"zel.rtrange"});
    enum_formatters(nullptr, nullptr);
}

bool digits(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

bool is_version(const std::string& text) {
    const std::size_t hyphen = text.find('-');
    if (hyphen == std::string::npos || text.size() < hyphen + 9)
        return false;
    const std::string revision = text.substr(hyphen + 1, 8);
    const std::string suffix = text.substr(hyphen + 9);
    return text.find_first_not_of("0123456789.") == hyphen &&
           revision.find_first_not_of("0123456789abcdef") == std::string::npos &&
           (suffix.empty() || suffix == "-dirty");
}

/// Checks the version in the metadata against that of the compiler of this file: two digits major,
/// two digits minor, five digits patch level.
void expect_compiler_version(const std::string& version) {
    ASSERT_EQ(version.size(), 9U);
    ASSERT_TRUE(digits(version)) << version;
#if defined(__clang__)
    EXPECT_EQ(std::stoi(version),
              (__clang_major__ * 100 + __clang_minor__) * 100'000 + __clang_patchlevel__);
#elif defined(_MSC_FULL_VER)
    EXPECT_EQ(version, std::to_string(_MSC_FULL_VER));
#elif __GNUC_MINOR__ > 0
    EXPECT_EQ(std::stoi(version),
              (__GNUC__ * 100 + __GNUC_MINOR__) * 100'000 + __GNUC_PATCHLEVEL__);
#else
    // This compiler hides its minor version; that of a release of GCC is never 0.
    EXPECT_EQ(std::stoi(version.substr(0, 2)), __GNUC__);
    EXPECT_NE(version.substr(2, 2), "00");
#endif
}

bool is_date(const std::string& text) {
    static const std::string months = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const std::size_t month = months.find(text.substr(0, 3));
    return text.size() == 11 && month != std::string::npos && month % 3 == 0 && text[3] == ' ' &&
           (text[4] == ' ' || digits(text.substr(4, 1))) && digits(text.substr(5, 1)) &&
           text[6] == ' ' && digits(text.substr(7));
}

TEST(module, metadata_is_a_dictionary_of_ten_lines) {
    const std::string text = query_metadata();
    std::vector<std::pair<std::string, std::string>> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        ASSERT_NE(line.find('='), std::string::npos) << line;
        lines.emplace_back(line.substr(0, line.find('=')), line.substr(line.find('=') + 1));
        begin = end + 1;
    }
    const std::vector<std::string> keys{
        "zel-meta",        "zel-sdk-version",    "build-configuration",
        "build-platform",  "build-architecture", "build-date",
        "compiler",        "compiler-version",   "zel-product-version",
        "zel-library-type"};
    ASSERT_EQ(lines.size(), keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(lines[i].first, keys[i]);
    EXPECT_EQ(lines[0].second, "nddictionary");
    EXPECT_TRUE(is_version(lines[1].second)) << lines[1].second;
    EXPECT_EQ(lines[2].second, "release");
    EXPECT_EQ(lines[3].second, "Win32");
    EXPECT_EQ(lines[4].second, "x64");
    EXPECT_TRUE(is_date(lines[5].second)) << lines[5].second;
    EXPECT_FALSE(lines[6].second.empty());
    expect_compiler_version(lines[7].second);
    EXPECT_EQ(lines[8].second, lines[1].second);
    EXPECT_EQ(lines[9].second, "formatter");
}

} // namespace
