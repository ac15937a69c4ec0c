// Creating instances, finding their services, and what they ask of the host.

#include <functional>

#include <gtest/gtest.h>

#include "tests/harness/plugin_under_test.hpp"

namespace harness {
namespace {

constexpr const char* transformation = "zel_formatter_raw_package_transformation_support_t";
constexpr const char* binding = "zel_formatter_data_source_binding_t";
constexpr std::uint32_t invalid_argument = 0xA0030016;
constexpr std::uint32_t failed = 0xA0000FA5;

std::string not_initialized(const std::string& argument) {
    return "argument '" + argument + "' was not initialized";
}

bool can_resolve(const instance& instance, const char* name) {
    bool result = false;
    EXPECT_EQ(instance.locator->can_resolve(instance.locator->handle, name, &result, nullptr), 0U);
    return result;
}

TEST(services, each_formatter_offers_its_own_by_exact_name) {
    instance recorder(recorder_formatter());
    instance ethernet(ethernet_formatter());
    EXPECT_TRUE(can_resolve(recorder, transformation));
    EXPECT_TRUE(can_resolve(recorder, binding));
    EXPECT_TRUE(can_resolve(ethernet, transformation));
    EXPECT_FALSE(can_resolve(ethernet, binding));
    EXPECT_FALSE(can_resolve(recorder, "zel_formatter_data_source_binding_t2"));
    EXPECT_FALSE(can_resolve(recorder, "zel_formatter_data_source_binding_"));
    EXPECT_FALSE(can_resolve(recorder, ""));
}

TEST(services, an_unknown_name_fails_and_leaves_the_target_alone) {
    instance ethernet(ethernet_formatter());
    for (const char* const name : {binding, "zel_log_t", ""}) {
        int marker = 0;
        void* target = &marker;
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(ethernet.locator->resolve(ethernet.locator->handle, name, &target, &details),
                  failed);
        const error error = take_error(details);
        EXPECT_EQ(error.code, failed);
        EXPECT_EQ(error.description, std::string("requested service '") + name + "' not found");
        EXPECT_EQ(target, &marker);
    }
}

/// Calls with an error target; gives the description of the error, which has to be about an
/// argument.
std::string refusal(const std::function<zel_status_t(zel_error_details_t**)>& call) {
    zel_error_details_t* details = nullptr;
    EXPECT_EQ(call(&details), invalid_argument);
    // A host that wants no error record gets the status alone.
    EXPECT_EQ(call(nullptr), invalid_argument);
    return take_error(details).description;
}

TEST(services, look_ups_and_binding_check_their_arguments_in_order) {
    instance recorder;
    const auto& [resolve, can_resolve, locator] = *recorder.locator;
    const auto& service =
        *static_cast<const zel_formatter_data_source_binding_t*>(recorder.service(binding));
    void* target = nullptr;
    bool answer = true;
    int source = 0;
    const zel_data_source_provider_t provider{};
    EXPECT_EQ(service.bind(recorder.handle, &source, &provider, nullptr), 0U);
    // The first `given` arguments are there, all others are null.
    const char* const missing[][3] = {{"handle", "handle", "handle"},
                                      {"service_type", "service_type", "data_source"},
                                      {"target", "can_resolve", "data_source_provider"}};
    for (int given = 0; given < 3; ++given) {
        void* const handle = given > 0 ? locator : nullptr;
        const char* const name = given > 1 ? binding : nullptr;
        const auto& [of_resolve, of_can_resolve, of_bind] = missing[given];
        EXPECT_EQ(refusal([&](auto e) { return resolve(handle, name, nullptr, e); }),
                  not_initialized(of_resolve));
        EXPECT_EQ(refusal([&](auto e) { return can_resolve(handle, name, nullptr, e); }),
                  not_initialized(of_can_resolve));
        EXPECT_EQ(refusal([&](auto e) {
                      return service.bind(given > 0 ? recorder.handle : nullptr,
                                          given > 1 ? &source : nullptr, nullptr, e);
                  }),
                  not_initialized(of_bind));
    }
    EXPECT_EQ(refusal([&](auto e) { return resolve(nullptr, binding, &target, e); }),
              not_initialized("handle"));
    EXPECT_EQ(refusal([&](auto e) { return can_resolve(locator, nullptr, &answer, e); }),
              not_initialized("service_type"));
}

TEST(services, transform_checks_its_arguments_in_order) {
    const bytes block = raw_package{}.block();
    const auto* const raw = reinterpret_cast<const zel_raw_package_t*>(block.data());
    zel_package_t** packages = nullptr;
    std::size_t count = 0;
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        instance subject(*formatter);
        // The raw package is looked at last; before it, the first `given` arguments are there.
        const auto expect_missing = [&](int given, const zel_raw_package_t* raw_or_none,
                                        const std::string& argument) {
            const auto transform = [&](zel_error_details_t** error) {
                return subject.transformation->transform(
                    given > 0 ? subject.handle : nullptr, raw_or_none,
                    given > 1 ? &packages : nullptr, given > 2 ? &count : nullptr,
                    given > 3 ? &subject.allocator : nullptr, error);
            };
            EXPECT_EQ(refusal(transform), not_initialized(argument));
        };
        const char* const missing[] = {"handle", "packages", "package_count", "allocator"};
        for (int given = 0; given < 4; ++given) {
            expect_missing(given, raw, missing[given]);
            expect_missing(given, nullptr, missing[given]);
        }
        expect_missing(4, nullptr, "raw_package");
        EXPECT_EQ(subject.array_requests, 0U);
    }
}

TEST(services, null_instances_are_harmless) {
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        EXPECT_EQ(formatter->destroy(nullptr), 0U);
        zel_service_locator_t some{};
        zel_service_locator_t* target = &some;
        EXPECT_EQ(formatter->get_service_locator(nullptr, &target, nullptr), 0U);
        EXPECT_EQ(target, nullptr);

        host_services services;
        EXPECT_EQ(
            refusal([&](auto e) { return formatter->get_service_locator(nullptr, nullptr, e); }),
            not_initialized("target"));
        EXPECT_EQ(refusal([&](auto e) { return formatter->create(nullptr, &services.locator, e); }),
                  not_initialized("instance"));
    }
}

/// Creates an instance with these services; gives the error, after checking that a failure leaves
/// the target alone.
error create(const zel_service_locator_t* locator) {
    int marker = 0;
    void* target = &marker;
    zel_error_details_t* details = nullptr;
    const zel_status_t status = recorder_formatter().create(&target, locator, &details);
    const error error = take_error(details);
    EXPECT_EQ(status, error.code);
    if (status == 0)
        EXPECT_EQ(recorder_formatter().destroy(target), 0U);
    else
        EXPECT_EQ(target, &marker);
    EXPECT_EQ(recording_zelc()->live_errors, 0);
    return error;
}

TEST(services, a_host_may_offer_no_logging) {
    host_services without_log;
    without_log.offers_log = false;
    EXPECT_EQ(create(&without_log.locator).code, 0U);
    host_services without_question;
    without_question.locator.can_resolve = nullptr;
    EXPECT_EQ(create(&without_question.locator).code, 0U);
    EXPECT_EQ(create(nullptr).code, 0U);
}

TEST(services, an_unusable_logging_service_ends_the_creation) {
    const std::string message = "invalid logger interface passed to logger constructor";
    host_services no_handle;
    no_handle.log.handle = nullptr;
    EXPECT_EQ(create(&no_handle.locator).description, message);
    host_services no_function;
    no_function.log.log = nullptr;
    EXPECT_EQ(create(&no_function.locator).description, message);
    host_services no_resolve;
    no_resolve.locator.resolve = nullptr;
    const error error = create(&no_resolve.locator);
    EXPECT_EQ(error.description, message);
    EXPECT_EQ(error.code, failed);
}

TEST(services, errors_of_the_hosts_look_ups_come_back_translated) {
    struct {
        std::uint32_t code;
        const char* description;
        std::uint32_t expected_code;
        const char* expected_description;
    } const cases[] = {
        {0xA00005B4, "too late", 0xA00005B4, "too late"},
        {0xA0000FA1, "dropped on purpose", 0xA0000FA1, "function not implemented"},
        {0xA0030011, "is there", 0xA0030011, "is there"},
        {0xA0030016, "not this", 0xA0030016, "not this"},
        {0xA003000C, "no memory", failed, "no memory"},
        {0xA0000FA5, "broken", failed, "broken"},
        {0x80004005, nullptr, failed, "unknwon error"},
        {0xA0030016, nullptr, 0xA0030016, "unknwon error"},
    };
    for (const auto& expected : cases) {
        for (const bool in_resolve : {false, true}) {
            host_services services;
            (in_resolve ? services.resolve_code : services.can_resolve_code) = expected.code;
            services.lookup_description = expected.description;
            const error error = create(&services.locator);
            EXPECT_EQ(error.code, expected.expected_code);
            EXPECT_EQ(error.description, expected.expected_description);
        }
    }
    // Code 1 is a note: the question is unanswered, so there is no logging.
    host_services note;
    note.can_resolve_code = 1;
    EXPECT_EQ(create(&note.locator).code, 0U);
}

} // namespace
} // namespace harness
