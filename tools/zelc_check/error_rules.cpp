#include <cstdint>
#include <string>
#include <vector>

#include "tools/zelc_check/rule.hpp"

namespace zelc_check {
namespace {

constexpr std::uint32_t codes[] = {0,
                                   ZEL_ERROR_NOTE,
                                   0x7FFFFFFF,
                                   0xFFFFFFFF,
                                   ZEL_ERROR_FAILED,
                                   ZEL_ERROR_OUT_OF_MEMORY,
                                   ZEL_ERROR_INVALID_ARGUMENT};

void stores_a_record(const zelc& library) {
    for (const std::uint32_t code : codes)
        for (const char* const text : {"some text", "", static_cast<const char*>(nullptr)}) {
            error_slot error(library);
            library.create_error(error.target(), code, text);
            expect(error.get() != nullptr, "a record", "a null pointer");
        }
}

void returns_the_code(const zelc& library) {
    for (const std::uint32_t code : codes) {
        error_slot error(library);
        expect_equal(code, library.create_error(error.target(), code, "text"), "the status");
    }
}

void accepts_a_null_target(const zelc& library) {
    for (const std::uint32_t code : codes)
        expect_equal(code, library.create_error(nullptr, code, "text"), "the status");
}

void keeps_the_code(const zelc& library) {
    for (const std::uint32_t code : codes)
        expect_equal(code, library.get_code(make_error(library, code, "text").get()), "the code");
}

void expect_text(const std::string& expected, const char* seen) {
    if (seen == nullptr || seen != expected)
        throw broken_rule(quoted(expected.c_str()), quoted(seen));
}

void expect_description(const zelc& library, const error_slot& error, const std::string& text) {
    expect_text(text, library.get_description(error.get()));
}

void keeps_the_description(const zelc& library) {
    std::string every_byte;
    for (int byte = 1; byte < 256; ++byte)
        every_byte += static_cast<char>(byte);
    constexpr std::size_t mebibyte = 1 << 20;
    for (const std::string& text : {std::string(), std::string("%s %n %%"), every_byte,
                                    std::string(1023, 'a'), std::string(mebibyte, 'b')})
        expect_description(library, make_error(library, ZEL_ERROR_FAILED, text.c_str()), text);
}

void copies_the_description(const zelc& library) {
    std::string text = "the original text";
    const error_slot error = make_error(library, ZEL_ERROR_FAILED, text.c_str());
    text.assign(text.size(), 'x');
    expect_description(library, error, "the original text");
}

void accepts_a_null_description(const zelc& library) {
    const error_slot error = make_error(library, ZEL_ERROR_FAILED, nullptr);
    const char* const seen = library.get_description(error.get());
    expect(seen == nullptr, "a null pointer", quoted(seen));
}

/// A number of live records. Some are destroyed, before the others are looked at again.
void keeps_records_apart(const zelc& library) {
    constexpr std::uint32_t count = 1000;
    std::vector<std::string> texts;
    for (std::uint32_t i = 0; i < count; ++i)
        texts.push_back("record " + std::to_string(i) + std::string(i % 90, '.'));
    std::vector<error_slot> errors;
    std::vector<const char*> first_addresses;
    for (std::uint32_t i = 0; i < count; ++i) {
        errors.push_back(make_error(library, i, texts[i].c_str()));
        first_addresses.push_back(library.get_description(errors.back().get()));
    }
    for (std::uint32_t i = 0; i < count; i += 2)
        errors[i].clear();
    for (std::uint32_t i = 1; i < count; i += 2) {
        expect_equal(i, library.get_code(errors[i].get()), "the code");
        expect_text(texts[i], first_addresses[i]);
        expect_description(library, errors[i], texts[i]);
    }
}

void accepts_null_to_destroy(const zelc& library) {
    library.destroy_error(nullptr);
}

} // namespace

std::vector<rule> error_rules() {
    return {
        {"E1", stores_a_record, nullptr},
        {"E2", returns_the_code, nullptr},
        {"E3", accepts_a_null_target, nullptr},
        {"E4", nullptr, "memory does not run out here"},
        {"E5", keeps_the_code, nullptr},
        {"E6", keeps_the_description, nullptr},
        {"E7", copies_the_description, nullptr},
        {"E8", accepts_a_null_description, nullptr},
        {"E9", keeps_records_apart, nullptr},
        {"E10", accepts_null_to_destroy, nullptr},
        {"E11", nullptr, "needs a leak checker, such as valgrind"},
    };
}

} // namespace zelc_check
