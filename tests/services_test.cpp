// Creating instances, finding their services, and what they ask of the host.

#include <gtest/gtest.h>

#include "tests/harness/plugin_under_test.hpp"

namespace {

using namespace harness;

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

TEST(services, look_ups_check_their_arguments_in_order) {
    instance recorder;
    void* const handle = recorder.locator->handle;
    void* target = nullptr;
    bool result = true;
    const auto resolve = [&](void* h, const char* name, void** t) {
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(recorder.locator->resolve(h, name, t, &details), invalid_argument);
        return take_error(details).description;
    };
    EXPECT_EQ(resolve(nullptr, nullptr, nullptr), not_initialized("handle"));
    EXPECT_EQ(resolve(handle, nullptr, nullptr), not_initialized("service_type"));
    EXPECT_EQ(resolve(handle, binding, nullptr), not_initialized("target"));

    const auto ask = [&](void* h, const char* name, bool* r) {
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(recorder.locator->can_resolve(h, name, r, &details), invalid_argument);
        return take_error(details).description;
    };
    EXPECT_EQ(ask(nullptr, nullptr, nullptr), not_initialized("handle"));
    EXPECT_EQ(ask(handle, nullptr, nullptr), not_initialized("service_type"));
    EXPECT_EQ(ask(handle, binding, nullptr), not_initialized("can_resolve"));
    // A host that wants no error record gets the status alone.
    EXPECT_EQ(recorder.locator->resolve(nullptr, binding, &target, nullptr), invalid_argument);
    EXPECT_EQ(recorder.locator->can_resolve(handle, nullptr, &result, nullptr), invalid_argument);
}

TEST(services, binding_is_accepted_and_checks_its_arguments_in_order) {
    instance recorder;
    const auto& service =
        *static_cast<const zel_formatter_data_source_binding_t*>(recorder.service(binding));
    int source = 0;
    const zel_data_source_provider_t provider{};
    static_assert(sizeof(provider) == 48);
    EXPECT_EQ(service.bind(recorder.handle, &source, &provider, nullptr), 0U);

    const auto bind = [&](void* h, void* s, const zel_data_source_provider_t* p) {
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(service.bind(h, s, p, &details), invalid_argument);
        return take_error(details).description;
    };
    EXPECT_EQ(bind(nullptr, nullptr, nullptr), not_initialized("handle"));
    EXPECT_EQ(bind(recorder.handle, nullptr, nullptr), not_initialized("data_source"));
    EXPECT_EQ(bind(recorder.handle, &source, nullptr), not_initialized("data_source_provider"));
}

TEST(services, transform_checks_its_arguments_in_order) {
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        instance subject(*formatter);
        const bytes block = raw_package{}.block();
        const auto* const raw = reinterpret_cast<const zel_raw_package_t*>(block.data());
        zel_package_t** packages = nullptr;
        std::size_t count = 0;
        const auto transform = [&](void* h, const zel_raw_package_t* r, zel_package_t*** p,
                                   std::size_t* c, const zel_allocator_t* a) {
            zel_error_details_t* details = nullptr;
            EXPECT_EQ(subject.transformation->transform(h, r, p, c, a, &details), invalid_argument);
            return take_error(details).description;
        };
        void* const h = subject.handle;
        EXPECT_EQ(transform(nullptr, nullptr, nullptr, nullptr, nullptr),
                  not_initialized("handle"));
        EXPECT_EQ(transform(h, nullptr, nullptr, nullptr, nullptr), not_initialized("packages"));
        EXPECT_EQ(transform(h, nullptr, &packages, nullptr, nullptr),
                  not_initialized("package_count"));
        EXPECT_EQ(transform(h, nullptr, &packages, &count, nullptr), not_initialized("allocator"));
        EXPECT_EQ(transform(h, nullptr, &packages, &count, &subject.allocator),
                  not_initialized("raw_package"));
        EXPECT_EQ(transform(h, raw, &packages, &count, nullptr), not_initialized("allocator"));
        EXPECT_EQ(subject.array_requests, 0U);
    }
}

TEST(services, null_instances_are_harmless) {
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        EXPECT_EQ(formatter->destroy(nullptr), 0U);
        zel_service_locator_t some{};
        const zel_service_locator_t* target = &some;
        EXPECT_EQ(formatter->get_service_locator(nullptr, &target, nullptr), 0U);
        EXPECT_EQ(target, nullptr);

        zel_error_details_t* details = nullptr;
        EXPECT_EQ(formatter->get_service_locator(nullptr, nullptr, &details), invalid_argument);
        EXPECT_EQ(take_error(details).description, not_initialized("target"));
        host_services services;
        EXPECT_EQ(formatter->create(nullptr, &services.locator, &details), invalid_argument);
        EXPECT_EQ(take_error(details).description, not_initialized("instance"));
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
