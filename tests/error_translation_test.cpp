// Exceptions of a formatter class on their way to the host.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ios>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "extensibility/dispatch_table.hpp"
#include "extensibility/errors.hpp"
#include "extensibility/formatter.hpp"
#include "tests/harness/plugin_under_test.hpp"

#ifdef _WIN32
#include <comdef.h>
#endif

namespace {

using namespace harness;
using namespace zel;

std::function<void()> action;

/// Throws whatever the test wants it to throw.
class throwing_formatter : public extensibility::transform::formatter<throwing_formatter> {
public:
    explicit throwing_formatter(std::shared_ptr<runtime::service_locator> host_services)
        : formatter(std::move(host_services)) {}
    void format(extensibility::package_list&, const zel_raw_package_t*,
                const zel_allocator_t*) override {
        action();
    }
};

const zel_formatter_dispatch_table_t throwing =
    extensibility::transform::dispatch_table<throwing_formatter>(
        extensibility::format_type_code::rtrange);

struct translation {
    const char* name;
    std::function<void()> action;
    std::uint32_t code;
    std::string description;
};

std::vector<translation> translations() {
    const auto system_error = [](int value, const std::error_category& category,
                                 std::uint32_t code) -> translation {
        const std::system_error error(value, category, "io");
        return {category.name(), [error] { throw error; }, code, error.what()};
    };
    return {
#ifdef _WIN32
        {"COM error", [] { throw _com_error(static_cast<HRESULT>(0x80004005)); }, 0x80004005,
         "HRESULT error"},
#endif
        {"no memory", [] { throw std::bad_alloc(); }, 0xA003000C, "memory allocation failed"},
        {"no array", [] { throw std::bad_array_new_length(); }, 0xA003000C,
         "memory allocation failed"},
        {"not implemented", [] { throw runtime::not_implemented_error(); }, 0xA0000FA1,
         "function not implemented"},
        {"timed out", [] { throw runtime::timed_out_error("late"); }, 0xA00005B4, "late"},
        {"file exists", [] { throw runtime::file_exists_error("there"); }, 0xA0030011, "there"},
        {"argument", [] { throw std::invalid_argument("bad"); }, 0xA0030016, "bad"},
        system_error(2, std::generic_category(), 0xA0030002),
        system_error(1, std::iostream_category(), 0xA0050001),
        system_error(5, std::system_category(), 0xA0070005),
        {"logic", [] { throw std::logic_error("wrong"); }, 0xA0000FA5, "wrong"},
        {"runtime", [] { throw std::runtime_error("failed"); }, 0xA0000FA5, "failed"},
        {"other", [] { throw 42; }, 0xA0000FA5, "unknown error"},
    };
}

TEST(error_translation, no_exception_leaves_transform) {
    instance subject(throwing);
    for (const translation& expected : translations()) {
        SCOPED_TRACE(expected.name);
        action = expected.action;
        const outcome result = subject.transform({});
        EXPECT_EQ(result.status, expected.code);
        EXPECT_EQ(result.error.description, expected.description);
    }
    // A system error with value 0 is the one exception that reports success.
    action = [] { throw std::system_error(0, std::generic_category()); };
    zel_error_details_t* details = nullptr;
    zel_package_t** packages = nullptr;
    std::size_t count = 0;
    const bytes block = raw_package{}.block();
    EXPECT_EQ(subject.transformation->transform(
                  subject.handle, reinterpret_cast<const zel_raw_package_t*>(block.data()),
                  &packages, &count, &subject.allocator, &details),
              0U);
    EXPECT_EQ(take_error(details).code, 0U);
    action = nullptr;
}

struct throwing_at_its_end {
    ~throwing_at_its_end() noexcept(false) { action(); }
};

TEST(error_translation, destroy_gives_the_bare_code) {
    for (const translation& expected : translations()) {
        SCOPED_TRACE(expected.name);
        action = expected.action;
        EXPECT_EQ(extensibility::transform::destroy<throwing_at_its_end>(new throwing_at_its_end),
                  expected.code);
        EXPECT_EQ(recording_zelc()->live_errors, 0);
    }
    action = nullptr;
}

TEST(error_translation, an_empty_owner_has_no_data) {
    EXPECT_THROW(extensibility::package_data(extensibility::owned_package{}),
                 std::invalid_argument);
}

TEST(error_translation, format_types_are_known_by_code) {
    using extensibility::format_type_identifier;
    EXPECT_STREQ(format_type_identifier(0xA2F), "zel.rtrange");
    EXPECT_STREQ(format_type_identifier(0xA3F), "zel.eth.rtrange");
    EXPECT_STREQ(format_type_identifier(0x60F), "zel.eth");
    for (const int unknown : {0x000, 0x1FF, 0xA5F, 0xA2E, 0x60D, 0xFFF})
        EXPECT_EQ(format_type_identifier(static_cast<std::uint16_t>(unknown)), nullptr);
}

} // namespace
