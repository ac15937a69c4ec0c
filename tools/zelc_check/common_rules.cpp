#include <algorithm>
#include <chrono>
#include <cstdint>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "tools/zelc_check/rule.hpp"

namespace zelc_check {
namespace {

/// Judges the result of one call, and empties `error` for the next one.
void expect_agreement(const zelc& library, zel_status_t status, error_slot& error) {
    if (error.get() == nullptr)
        return; // a success; otherwise, memory has run out or another rule is broken
    const std::uint32_t code = library.get_code(error.get());
    if (code == ZEL_ERROR_NOTE)
        expect_equal(0, status, "with a note, status");
    else
        expect(status != 0 && status == code, "a failure's status to be the code of its record",
               "status " + hexadecimal(status) + " and code " + hexadecimal(code));
    error.clear();
}

void returns_what_the_record_says(const zelc& library) {
    error_slot error(library);
    zel_package_t* created = nullptr;
    zel_status_t status = library.create_package(&allocator, 100, &created, error.target());
    expect_agreement(library, status, error);
    if (created != nullptr) {
        status = library.assign_format_type(created, ZEL_FORMAT_TYPE_RTRANGE, error.target());
        expect_agreement(library, status, error);
        status = library.destroy_package(&allocator, created, error.target());
        expect_agreement(library, status, error);
    }
    created = nullptr;
    status = library.create_package_with_data(&allocator, ZEL_FORMAT_TYPE_ETH, "data", 4, &created,
                                              error.target());
    const package with_data(library, created);
    expect_agreement(library, status, error);
    created = nullptr;
    status = library.create_package(&allocator, SIZE_MAX, &created, error.target());
    expect_agreement(library, status, error);
}

void accepts_a_null_error(const zelc& library) {
    zel_package_t* created = nullptr;
    library.create_package(&allocator, SIZE_MAX, &created, nullptr);
    library.create_package(&allocator, 100, &created, nullptr);
    expect(created != nullptr, "a package without an 'error'", "a null pointer");
    expect_equal(0, library.assign_format_type(created, ZEL_FORMAT_TYPE_RTRANGE, nullptr),
                 "without an 'error', status");
    expect_equal(0, library.destroy_package(&allocator, created, nullptr),
                 "without an 'error', status");
    created = nullptr;
    library.create_package_with_data(&allocator, ZEL_FORMAT_TYPE_ETH, "data", 4, &created, nullptr);
    expect(created != nullptr, "a package without an 'error'", "a null pointer");
    library.destroy_package(&allocator, created, nullptr);
    for_each_state([&](std::uint32_t state, std::uint16_t source_id, std::uint32_t nibble) {
        library.check_state(state, source_id, nibble, nullptr);
    });
}

/// Creates records and packages that contain `value`, which other threads do not use.
void use_own_values(const zelc& library, std::uint8_t value) {
    const std::string text(100, static_cast<char>('a' + value));
    const std::vector<std::uint8_t> data(20'000, value);
    // Long enough for the threads to run at the same time on a busy machine.
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    while (std::chrono::steady_clock::now() < end) {
        const error_slot error = make_error(library, value, text.c_str());
        const package one = make_package(library, ZEL_FORMAT_TYPE_ETH, data);
        expect_equal(value, library.get_code(error.get()), "on one of several threads, the code");
        const char* const seen = library.get_description(error.get());
        expect(seen != nullptr && seen == text, "the description of this thread",
               "that of another thread");
        expect(std::ranges::equal(one.data(data.size()), data), "the data of this thread",
               "those of another thread");
    }
}

} // namespace

std::vector<rule> common_rules() {
    return {
        {"A1", returns_what_the_record_says, nullptr},
        {"A2", accepts_a_null_error, nullptr},
        {"A3", nullptr, "needs an instance of a plug-in"},
    };
}

void check_on_threads(const zelc& library, const std::vector<rule>& kept) {
    constexpr int threads = 4, rounds = 3;
    // Made here, and used and destroyed there.
    std::vector<package> packages;
    std::vector<error_slot> errors;
    for (int i = 0; i < threads; ++i) {
        packages.push_back(make_package(library, 100));
        errors.push_back(make_error(library, ZEL_ERROR_FAILED, "text"));
    }
    std::vector<std::future<void>> runs;
    // Not a latch: that of MinGW's library can miss a wake-up and then waits forever.
    std::promise<void> all_started;
    const std::shared_future<void> start = all_started.get_future().share();
    const auto run = [&, start](const package one, const error_slot error, std::uint8_t value) {
        start.wait();
        one.fill(1, 100);
        expect_equal(ZEL_ERROR_FAILED, library.get_code(error.get()),
                     "on another thread, the code");
        use_own_values(library, value);
        for (int round = 0; round < rounds; ++round)
            for (const rule& rule : kept)
                rule.check(library);
    };
    for (std::size_t i = 0; i < threads; ++i)
        runs.push_back(std::async(std::launch::async, run, std::move(packages[i]),
                                  std::move(errors[i]), static_cast<std::uint8_t>(i + 2)));
    all_started.set_value();
    try {
        for (auto& one : runs)
            one.get();
    } catch (const not_checkable& error) {
        throw broken_rule("what one thread gets", error.what());
    }
}

} // namespace zelc_check
